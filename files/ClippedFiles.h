#pragma once

#include <QByteArray>
#include <QStringList>

// Files on a clipboard, in the formats by which the programs of the desktops hand them on. Any
// thread.
namespace ClippedFiles {

enum class Intent { Copy, Cut };

// All that a program may want, the best known to most of them first.
QStringList formats(Intent intent);
// The paths in one of these formats.
QByteArray written(const QString &format, const QStringList &paths, Intent intent);

// The formats to ask for, of those that a clipboard offers, which may be another program's: each
// takes its time. None when there are no files.
QStringList wanted(const QStringList &offered);

struct Clip {
    QStringList paths {}; // each once, in their order
    QStringList others {}; // addresses that are no file of this machine, as they stand
    Intent intent = Intent::Copy;
};
// From the wanted formats, one by one.
Clip read(const QStringList &wanted, const QList<QByteArray> &contents);

} // namespace ClippedFiles
