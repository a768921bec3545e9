#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QSet>
#include <QString>

#include <memory>

struct FileStatus;

// Marks on an item beyond its status: label, alias and hidden flags as other systems write them
// (FinderInfo, see the readers of user.com.apple.FinderInfo, osx.com.apple.FinderInfo and
// user.org.netatalk.Metadata), desktop tags, and the lock. Any thread.
namespace FileFlags {

// Bits of the FinderInfo flag word.
inline constexpr quint16 LabelMask = 0x000E;
inline constexpr quint16 Invisible = 0x4000;
inline constexpr quint16 Alias = 0x8000;

struct Marks {
    quint8 labelBits = 0; // the 3-bit label field, as in the FinderInfo flags AND LabelMask
    bool invisible = false;
    bool alias = false;
};

// The marks of an item, links followed. All clear where nothing can be read.
Marks marks(const char *path);
Marks marks(const QString &path);

// Whether files on the device keep extended attributes; false after one call there has answered
// ENOTSUP, so that a listing asks once and not per row.
bool devicePossiblyHasMarks(quint64 device);

// Locked by its owner (xattr user.twinleaf.locked) or immutable. Links are not followed.
bool isLocked(const QString &path);
bool isLocked(const QString &path, const FileStatus &status);

} // namespace FileFlags
