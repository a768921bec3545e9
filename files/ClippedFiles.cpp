#include "files/ClippedFiles.h"

#include "files/FileName.h"
#include "files/FileUrls.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace {

const QString UriList = u"text/uri-list"_s;
const QString PlainText = u"text/plain"_s;
// A line "copy" or "cut", then the addresses.
const QStringList WithIntent { u"x-special/gnome-copied-files"_s,
                               u"x-special/mate-copied-files"_s };
// "1" beside a list of addresses that is cut.
const QString CutMark = u"application/x-kde-cutselection"_s;

QByteArray withoutLastBreak(QByteArray lines, qsizetype breakSize)
{
    lines.chop(breakSize);
    return lines;
}

} // namespace

QStringList ClippedFiles::formats(Intent intent)
{
    QStringList all = QStringList { UriList } + WithIntent + QStringList { PlainText };
    if (intent == Intent::Cut)
        all.append(CutMark);
    return all;
}

QByteArray ClippedFiles::written(const QString &format, const QStringList &paths, Intent intent)
{
    if (format == UriList)
        return FileUrls::uriList(paths);
    if (WithIntent.contains(format))
        return (intent == Intent::Cut ? "cut\n" : "copy\n")
            + withoutLastBreak(FileUrls::uriList(paths).replace("\r\n", "\n"), 1);
    if (format == CutMark)
        return intent == Intent::Cut ? "1" : "0";
    // As bytes: a name that is not UTF-8 is pasted as it stands on the disk.
    return format == PlainText ? FileName::toBytes(paths.join(u'\n')) : QByteArray();
}

QStringList ClippedFiles::wanted(const QStringList &offered)
{
    for (const QString &format : WithIntent)
        if (offered.contains(format))
            return { format };
    if (!offered.contains(UriList))
        return {};
    return offered.contains(CutMark) ? QStringList { UriList, CutMark } : QStringList { UriList };
}

ClippedFiles::Clip ClippedFiles::read(const QStringList &wanted, const QList<QByteArray> &contents)
{
    Clip clip;
    QByteArray list = contents.value(0);
    if (WithIntent.contains(wanted.value(0))) {
        const qsizetype end = list.indexOf('\n');
        const QByteArray word = list.left(end < 0 ? list.size() : end).trimmed();
        if (word == "cut")
            clip.intent = Intent::Cut;
        if (word == "cut" || word == "copy")
            list = end < 0 ? QByteArray() : list.mid(end + 1);
    } else if (contents.value(1).startsWith('1')) {
        clip.intent = Intent::Cut;
    }
    const FileUrls::Sorted found = FileUrls::sorted(list);
    QSet<QString> seen;
    for (const QString &path : found.paths) {
        if (const qsizetype known = seen.size(); seen.insert(path), seen.size() > known)
            clip.paths.append(path);
    }
    for (const QByteArray &other : found.others)
        clip.others.append(QString::fromUtf8(other));
    return clip;
}
