#include "files/FileFlags.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/ItemMarks.h"
#include "files/SystemCalls.h"

#include <QSet>
#include <QtEndian>
#include <QVarLengthArray>

#include <cerrno>
#include <mutex>
#include <sys/stat.h>
#include <sys/xattr.h>

namespace {

// The label field of each label index, 0 to 7.
constexpr quint8 LabelBits[] = { 0, 12, 14, 10, 4, 8, 6, 2 };
constexpr qsizetype FinderInfoSize = 32; // bytes; the flag word stands at 8, big-endian
constexpr qsizetype UsualAttributeNames = 256; // bytes
constexpr qsizetype MostAttributeNames = 65536; // bytes; the kernel's own limit

std::mutex devicesMutex;
QSet<quint64> devicesWithoutMarks; // under devicesMutex

QByteArray attribute(const char *path, const char *name)
{
    char value[4096];
    const ssize_t size = ::getxattr(path, name, value, sizeof value);
    return size > 0 ? QByteArray(value, size) : QByteArray();
}

quint8 bitsOfColor(const QByteArray &tag)
{
    struct Color {
        const char *name;
        int label;
    };
    static constexpr Color colors[] = { { "Red", 1 },   { "Orange", 2 }, { "Yellow", 3 },
                                        { "Green", 4 }, { "Blue", 5 },   { "Purple", 6 },
                                        { "Grey", 7 },  { "Gray", 7 } };
    const QString name = QString::fromUtf8(tag).trimmed();
    for (const Color &color : colors) {
        if (name.compare(QLatin1StringView(color.name), Qt::CaseInsensitive) == 0
            || name.compare(localized(color.name), Qt::CaseInsensitive) == 0)
            return LabelBits[color.label];
    }
    return 0;
}

// The FinderInfo inside an AppleDouble header (RFC 1740): entry id 9.
QByteArray finderInfoOfAppleDouble(const QByteArray &header)
{
    if (header.size() < 26)
        return {};
    const auto *data = reinterpret_cast<const uchar *>(header.constData());
    const int entries = qFromBigEndian<quint16>(data + 24);
    for (int i = 0; i < entries && 26 + (i + 1) * 12 <= header.size(); ++i) {
        const uchar *entry = data + 26 + i * 12;
        if (qFromBigEndian<quint32>(entry) == 9)
            return header.mid(qFromBigEndian<quint32>(entry + 4), FinderInfoSize);
    }
    return {};
}

quint16 finderFlags(const QByteArray &info)
{
    return info.size() >= 10
        ? qFromBigEndian<quint16>(reinterpret_cast<const uchar *>(info.constData()) + 8)
        : quint16(0);
}

} // namespace

FileFlags::Marks FileFlags::marks(const char *path)
{
    // The kernel clears as much memory as it is offered, which for 64 KiB takes longer than the
    // rest.
    QVarLengthArray<char, UsualAttributeNames> names(UsualAttributeNames);
    ssize_t length = SystemCalls::listxattr(path, names.data(), size_t(names.size()));
    if (length < 0 && errno == ERANGE) {
        names.resize(MostAttributeNames);
        length = SystemCalls::listxattr(path, names.data(), size_t(names.size()));
    }
    if (length < 0 && errno == ENOTSUP) {
        struct stat status;
        if (::stat(path, &status) == 0) {
            const std::lock_guard lock(devicesMutex);
            devicesWithoutMarks.insert(status.st_dev);
        }
    }
    Marks marks;
    std::optional<quint8> label; // the first of the three kinds of labels that answers
    bool tags = false;
    quint16 flags = 0;
    for (ssize_t at = 0; at < length;) {
        const QByteArrayView name(names.constData() + at);
        at += name.size() + 1;
        if (name == "user.twinleaf.label") {
            const QByteArray value = attribute(path, name.data());
            if (value.size() == 1 && value[0] >= '0' && value[0] <= '7')
                label = LabelBits[value[0] - '0'];
        } else if (name == "user.xdg.tags") {
            tags = true;
        } else if (name == "user.com.apple.FinderInfo" || name == "osx.com.apple.FinderInfo") {
            flags |= finderFlags(attribute(path, name.data()));
        } else if (name == "user.org.netatalk.Metadata") {
            flags |= finderFlags(finderInfoOfAppleDouble(attribute(path, name.data())));
        }
    }
    if (!label && tags) {
        const auto all = attribute(path, "user.xdg.tags").split(',');
        for (const QByteArray &tag : all) {
            if (const quint8 bits = bitsOfColor(tag)) {
                label = bits;
                break;
            }
        }
    }
    marks.labelBits = label.value_or(quint8(flags & LabelMask));
    marks.invisible = flags & Invisible;
    marks.alias = flags & Alias;
    return marks;
}

FileFlags::Marks FileFlags::marks(const QString &path)
{
    return marks(FileName::toBytes(path).constData());
}

bool FileFlags::devicePossiblyHasMarks(quint64 device)
{
    const std::lock_guard lock(devicesMutex);
    return !devicesWithoutMarks.contains(device);
}

bool FileFlags::isLocked(const QString &path)
{
    const auto status = fileStatus(path, Links::NoFollow);
    return status && isLocked(path, *status);
}

bool FileFlags::isLocked(const QString &path, const FileStatus &status)
{
    if (status.immutable)
        return true;
    return ItemMarks::isMarked(FileName::toBytes(path).constData(), Links::NoFollow);
}
