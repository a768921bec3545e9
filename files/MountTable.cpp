#include "files/MountTable.h"

#include "files/FileName.h"

#include <QFile>
#include <QSet>

#include <sys/sysmacros.h>

using namespace Qt::StringLiterals;

namespace {

// Blank, tab, newline and backslash stand as "\040" and the like (proc(5)).
QByteArray unescaped(const QByteArray &field)
{
    QByteArray bytes;
    for (qsizetype i = 0; i < field.size(); ++i) {
        bool octal = false;
        const int code = field[i] == '\\' ? field.mid(i + 1, 3).toInt(&octal, 8) : 0;
        if (octal && i + 3 < field.size()) {
            bytes += char(code);
            i += 3;
        } else {
            bytes += field[i];
        }
    }
    return bytes;
}

} // namespace

MountTable MountTable::current()
{
    QFile file(u"/proc/self/mountinfo"_s);
    return file.open(QIODevice::ReadOnly) ? fromText(file.readAll()) : MountTable();
}

MountTable MountTable::fromText(const QByteArray &mountinfo)
{
    MountTable table;
    const auto lines = mountinfo.split('\n');
    for (const QByteArray &line : lines) {
        const QList<QByteArray> fields = line.split(' ');
        const qsizetype dash = fields.indexOf("-");
        if (dash < 6 || fields.size() < dash + 3)
            continue;
        const QList<QByteArray> device = fields[2].split(':');
        table._mounts.append(Mount { makedev(device[0].toUInt(), device.value(1).toUInt()),
                                     FileName::fromBytes(unescaped(fields[3])),
                                     FileName::fromBytes(unescaped(fields[4])),
                                     QString::fromLatin1(fields[dash + 1]),
                                     FileName::fromBytes(unescaped(fields[dash + 2])) });
    }
    return table;
}

const Mount *MountTable::mountOf(const QString &path) const
{
    const Mount *best = nullptr;
    for (const Mount &mount : _mounts) {
        const bool holds = mount.point == u"/"_s || path == mount.point
            || (path.startsWith(mount.point) && path.at(mount.point.size()) == u'/');
        // Of two mounts on one point the later one lies on top.
        if (holds && (!best || mount.point.size() >= best->point.size()))
            best = &mount;
    }
    return best;
}

bool MountTable::isNetwork(const Mount &mount)
{
    static const QSet<QString> types { u"nfs"_s,         u"nfs4"_s,      u"cifs"_s,
                                       u"smb3"_s,        u"9p"_s,        u"afs"_s,
                                       u"ceph"_s,        u"glusterfs"_s, u"fuse.sshfs"_s,
                                       u"fuse.rclone"_s, u"davfs"_s,     u"fuse.gvfsd-fuse"_s };
    return types.contains(mount.type);
}

bool MountTable::isLocalVolume(const Mount &mount)
{
    if (mount.point == u"/"_s)
        return true;
    // Disks have a device node; loop devices are mostly packages of installed software.
    const bool disk =
        mount.source.startsWith(u"/dev/"_s) && !mount.source.startsWith(u"/dev/loop"_s);
    static const QSet<QString> systemFolders { u"boot"_s, u"efi"_s,  u"snap"_s,
                                               u"var"_s,  u"proc"_s, u"sys"_s };
    const bool system = systemFolders.contains(mount.point.section(u'/', 1, 1));
    return mount.root == u"/"_s && disk && !system;
}
