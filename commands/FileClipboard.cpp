#include "commands/FileClipboard.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/Waiting.h"
#include "model/CutItems.h"
#include "platform/Workspace.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMimeData>

#include <chrono>
#include <memory>

using namespace Qt::StringLiterals;
using ClippedFiles::Intent;

namespace {

constexpr qint64 Patience = 1000; // milliseconds, for one answer
constexpr std::chrono::seconds SilenceKept { 10 };

// Each format is made when somebody asks for it: of many files that takes its time.
class FilesData final : public QMimeData {
public:
    FilesData(QStringList paths, Intent intent)
        : _paths(std::move(paths))
        , _intent(intent)
    {
    }
    QStringList formats() const override { return ClippedFiles::formats(_intent); }

protected:
    QVariant retrieveData(const QString &format, QMetaType) const override
    {
        return formats().contains(format) ? QVariant(ClippedFiles::written(format, _paths, _intent))
                                          : QVariant();
    }

private:
    const QStringList _paths;
    const Intent _intent;
};

} // namespace

FileClipboard::FileClipboard(CutItems &items, Waiting &asker, const Workspace &desktop)
    : cutItems(items)
    , waiting(asker)
    , workspace(desktop)
{
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &FileClipboard::changed);
}

void FileClipboard::changed()
{
    ++_version;
    _silence = QDeadlineTimer(0);
}

std::nullopt_t FileClipboard::silent()
{
    _silence = QDeadlineTimer(SilenceKept);
    return std::nullopt;
}

void FileClipboard::put(const QStringList &paths, Intent intent)
{
    auto data = std::make_unique<FilesData>(paths, intent);
    // It lives as long as the clipboard is ours, and so do the marks.
    const QObject *mine = data.get();
    connect(mine, &QObject::destroyed, this, [this, mine] {
        if (_marked == mine)
            cutItems.set({});
    });
    _marked = mine;
    QGuiApplication::clipboard()->setMimeData(data.release());
    cutItems.set(intent == Intent::Cut ? paths : QStringList());
}

void FileClipboard::putText(const QStringList &lines)
{
    auto data = std::make_unique<QMimeData>();
    data->setData(u"text/plain"_s, FileName::toBytes(lines.join(u'\n')));
    QGuiApplication::clipboard()->setMimeData(data.release());
}

std::optional<FileClipboard::Held> FileClipboard::held()
{
    if (!_silence.hasExpired())
        return std::nullopt;
    QClipboard &clipboard = *QGuiApplication::clipboard();
    const QString text = localized("Reading the clipboard...");
    if (!clipboard.ownsClipboard()
        && !waiting.forWork(text, [this] { return workspace.clipboardAnswers(); }))
        return std::nullopt;
    QElapsedTimer since;
    since.start();
    const QMimeData *data = clipboard.mimeData();
    const QStringList offered = data ? data->formats() : QStringList();
    if (!data || offered.isEmpty()) {
        if (since.hasExpired(Patience))
            return silent();
        return Held { .version = _version };
    }
    const QStringList wanted = ClippedFiles::wanted(offered);
    QList<QByteArray> contents;
    for (const QString &format : wanted) {
        since.start();
        contents.append(data->data(format));
        // Somebody else may have named the formats for it.
        if (contents.last().isEmpty() && since.hasExpired(Patience))
            return silent();
    }
    return waiting.forRows(
        contents.value(0).count('\n'), text, [wanted, contents, version = _version] {
            const auto clip = ClippedFiles::read(wanted, contents);
            return Held { DropDecision::byFolder(clip.paths), clip.others, clip.intent, version };
        });
}

void FileClipboard::take(unsigned version, qsizetype runs)
{
    _taken = { version, runs };
}

void FileClipboard::runEnded(unsigned version, bool anyMoved)
{
    if (!isTaken(version))
        return;
    _taken.anyMoved = _taken.anyMoved || anyMoved;
    // Something else may be held by now.
    if (--_taken.runs == 0 && _taken.anyMoved && version == _version)
        QGuiApplication::clipboard()->clear();
}
