#pragma once

#include "files/FileName.h"
#include "files/PathText.h"
#include "tests/support/FoundContents.h"
#include "tests/support/Ledger.h"

#include <QRandomGenerator>

#include <filesystem>
#include <fstream>
#include <functional>

namespace fs = std::filesystem;

// Another program that works in the folders of an operation: it saves, appends, moves away, puts
// folders and links at names, and swaps hidden folders. What it writes is never to be lost; what it
// overwrites itself it excuses.
class OtherProgram final {
    Q_DISABLE_COPY(OtherProgram)

public:
    // `mayGo`: whether what is written at a path now is agreed to be lost.
    OtherProgram(quint32 seed, const Ledger &ledger, std::function<bool(const QString &path)> mayGo)
        : _random(seed)
        , _ledger(ledger)
        , _mayGo(std::move(mayGo))
    {
    }

    // Does something to an item of one of the folders, or inside it.
    void act(const QStringList &folders, const QStringList &names)
    {
        const auto one = [this](const QStringList &of) {
            return of[_random.bounded(int(of.size()))];
        };
        const QString folder = one(folders);
        QString path = PathText::joined(folder, one(names));
        if (_random.bounded(3) == 0)
            path = PathText::joined(path, one(names));
        std::error_code failed;
        // What it replaces may be a link that the path leads through.
        const fs::path given(FileName::toBytes(path).toStdString());
        const fs::path parent = fs::weakly_canonical(given.parent_path(), failed);
        if (failed) // a circle of links
            return;
        if (!parent.is_absolute())
            qFatal("It would write to the working folder: %s", given.c_str());
        const fs::path at = parent / given.filename();
        const fs::path beside = at.native() + "-other" + std::to_string(++_last);
        const bool mayGo = _mayGo(path);
        const bool file = fs::is_regular_file(fs::symlink_status(at, failed));
        if (file && !std::ifstream(at))
            return; // what it does not know it cannot excuse
        switch (_random.bounded(8)) {
        case 0: // as an editor does
            if (fs::is_directory(fs::symlink_status(at, failed)) || !write(beside, text("saved")))
                return;
            told("saves", path);
            forget(at);
            fs::rename(beside, at, failed);
            return keep(failed ? beside : at, mayGo && !failed);
        case 1:
            if (!fs::exists(fs::symlink_status(at, failed)) && write(at, text("created"))) {
                told("creates", path);
                keep(at, mayGo);
            }
            return;
        case 2:
            if (!file)
                return;
            told("appends to", path);
            forget(at);
            std::ofstream(at, std::ios::app) << " and " << _last;
            return keep(at, mayGo);
        case 3: // the number at its start is left
            if (!file || fs::file_size(at, failed) < 12)
                return;
            told("shortens", path);
            forget(at);
            fs::resize_file(at, fs::file_size(at, failed) - 1, failed);
            return keep(at, mayGo);
        case 4:
            if (!file)
                return;
            told("puts a folder at", path);
            forget(at);
            fs::remove(at, failed);
            fs::create_directory(at, failed);
            if (write(at / "work", text("work")))
                keep(at / "work", mayGo);
            return;
        case 5:
            told("puts a link at", path);
            return fs::create_symlink("victim", at, failed);
        case 6: // the folders themselves stay: by their paths it is known what was agreed
            for (const QString &kept : folders)
                if ((fs::weakly_canonical(FileName::toBytes(kept).toStdString(), failed) / "")
                        .native()
                        .starts_with((at / "").native()))
                    return;
            told("moves away", path);
            return fs::rename(at, beside, failed);
        default:
            swapHidden(FileName::toBytes(folder).toStdString());
        }
    }

private:
    // Of what is no folder.
    static QByteArray bytesOf(const fs::path &path)
    {
        return FoundContents::contentsAt(FileName::fromBytes(path.c_str())).values().value(0);
    }
    void told(const char *what, const QString &path) const
    {
        _ledger.note(Ledger::Act, QByteArray(what) + ' ' + FileName::toBytes(path));
    }
    // Numbered at its start, so that none is a part of another.
    QByteArray text(const char *what) const { return QByteArray::number(_last) + ' ' + what; }
    bool write(const fs::path &path, const QByteArray &content) const
    {
        std::ofstream file(path, std::ios::binary);
        file << content.toStdString();
        return bool(file);
    }
    void forget(const fs::path &path) const { _ledger.note(Ledger::Gone, bytesOf(path)); }
    void keep(const fs::path &path, bool mayGo) const
    {
        const QByteArray content = bytesOf(path);
        _ledger.note(Ledger::Written, content);
        if (mayGo)
            _ledger.note(Ledger::Gone, content);
    }
    // A folder of somebody's stands at the name of the operation's own hidden one.
    void swapHidden(const fs::path &folder)
    {
        std::error_code failed;
        for (const auto &entry : fs::directory_iterator(folder, failed)) {
            const fs::path at = entry.path();
            if (!at.filename().native().starts_with(".twinleaf-"))
                continue;
            told("swaps", FileName::fromBytes(at.c_str()));
            fs::rename(at, folder / ("stolen" + std::to_string(_last)), failed);
            if (failed)
                return;
            fs::create_directory(at, failed);
            write(at / "decoy", text("decoy"));
            return _ledger.note(Ledger::Written, text("decoy"));
        }
    }

    QRandomGenerator _random;
    const Ledger &_ledger;
    std::function<bool(const QString &)> _mayGo;
    int _last = 1000; // the items that were there before have lower numbers
};
