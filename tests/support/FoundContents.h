#pragma once

#include "files/FileName.h"
#include "files/FileStatus.h"
#include "tests/support/Ledger.h"

#include <QMultiHash>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <filesystem>
#include <fstream>

// Looks for every byte string below some folders: what files hold, where links point. What an
// operation keeps hidden is found only by those who were told of it.
namespace FoundContents {

namespace fs = std::filesystem;
using Places = QMultiHash<QByteArray, QByteArray>; // where each byte string lies

inline const fs::recursive_directory_iterator End {};

inline fs::recursive_directory_iterator below(const QString &folder)
{
    std::error_code ignored;
    return fs::recursive_directory_iterator(FileName::toBytes(folder).toStdString(), ignored);
}

// So that nothing stays unseen.
inline void openAll(const QString &folder)
{
    std::error_code ignored;
    const auto open = [&](const fs::path &path) {
        if (!fs::is_symlink(path, ignored))
            fs::permissions(path, fs::perms::owner_all, fs::perm_options::add, ignored);
    };
    open(FileName::toBytes(folder).toStdString());
    for (auto at = below(folder); at != End; at.increment(ignored))
        open(at->path());
}

inline QSet<QByteArray> contentsAt(const QString &path)
{
    if (const auto link = linkTarget(path))
        return { "-> " + FileName::toBytes(*link) };
    const fs::path at(FileName::toBytes(path).toStdString());
    std::error_code ignored;
    QSet<QByteArray> contents;
    if (fs::is_directory(at, ignored)) {
        for (const auto &entry : fs::directory_iterator(at, ignored))
            contents += contentsAt(FileName::fromBytes(entry.path().c_str()));
    } else if (fs::is_regular_file(at, ignored)) {
        std::ifstream file(at, std::ios::binary);
        contents += QByteArray::fromStdString({ std::istreambuf_iterator<char>(file), {} });
    }
    return contents;
}

inline Places placesBelow(const QStringList &folders)
{
    Places found;
    std::error_code ignored;
    for (const QString &top : folders) {
        openAll(top);
        for (auto at = below(top); at != End; at.increment(ignored))
            if (!at->is_directory(ignored) || at->is_symlink(ignored))
                for (const QByteArray &content :
                     contentsAt(FileName::fromBytes(at->path().c_str())))
                    found.insert(content, at->path().c_str());
    }
    return found;
}

// The name of the operation's hidden folder that a path leads through; one that another program
// put in its place is none.
inline QByteArray hiddenFolder(const QByteArray &path)
{
    const auto at = path.indexOf("/.twinleaf-");
    if (at < 0)
        return {};
    const auto end = path.indexOf('/', at + 1);
    const QByteArray folder = path.left(end);
    return fs::exists(fs::path(folder.toStdString()) / "decoy") ? QByteArray() : folder.mid(at + 1);
}

// A path in such a folder that was left, or nothing.
inline QByteArray leftHidden(const QStringList &folders)
{
    std::error_code ignored;
    for (const QString &top : folders)
        for (auto at = below(top); at != End; at.increment(ignored))
            if (!hiddenFolder(at->path().c_str()).isEmpty())
                return at->path().c_str();
    return {};
}

// What of it was there before, or came, and is not found although nobody agreed to lose it; and
// what stands at a name in part.
inline QByteArray losses(const QList<QByteArray> &before, const Ledger &ledger, const Places &found)
{
    QSet<QByteArray> known(before.begin(), before.end());
    QSet<QByteArray> agreed;
    QSet<QByteArray> gone;
    QByteArray told;
    for (const auto &[kind, text] : ledger.entries()) {
        if (kind == Ledger::Written)
            known.insert(text);
        else if (kind == Ledger::Agreed)
            agreed.insert(text);
        else if (kind == Ledger::Withdrawn)
            agreed.remove(text);
        else if (kind == Ledger::Gone)
            gone.insert(text);
        else if (kind == Ledger::Told)
            told += text;
    }
    const QSet<QByteArray> required = known - agreed - gone;
    QByteArray wrong;
    for (const QByteArray &content : required) {
        const auto places = found.values(content);
        // What is hidden is there only for those who were told of it.
        const bool reachable =
            std::any_of(places.begin(), places.end(), [&](const QByteArray &place) {
                const QByteArray folder = hiddenFolder(place);
                return folder.isEmpty() || told.contains(folder);
            });
        if (!reachable)
            wrong += "\n  lost: " + content.left(40)
                + (places.isEmpty() ? QByteArray() : " hidden at " + places.first());
    }
    for (const auto &[content, place] : found.asKeyValueRange())
        if (!known.contains(content) && !content.startsWith("-> ") && hiddenFolder(place).isEmpty()
            && !place.contains("/stolen"))
            wrong += "\n  in part: " + content.left(40) + " at " + place;
    return wrong;
}

} // namespace FoundContents
