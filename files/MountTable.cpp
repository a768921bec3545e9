#include "files/MountTable.h"

#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/PathText.h"

#include <QFile>
#include <QSet>

#include <algorithm>
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

QString &source()
{
    static QString file = u"/proc/self/mountinfo"_s;
    return file;
}

} // namespace

void MountTable::setSource(const QString &file)
{
    source() = file;
}

MountTable MountTable::current()
{
    QFile file(source());
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
        if (!fields[4].startsWith('/')) // out of this process's reach
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

bool MountTable::anyIn(const QString &path) const
{
    return std::ranges::any_of(_mounts, [below = path + u'/', &path](const Mount &mount) {
        return mount.point == path || mount.point.startsWith(below);
    });
}

bool MountTable::isLocal(const Mount &mount) const
{
    const auto answersItself = [](const QString &type) {
        static const QSet<QString> types {
            u"ext2"_s,      u"ext3"_s,    u"ext4"_s,    u"xfs"_s,         u"btrfs"_s,
            u"f2fs"_s,      u"jfs"_s,     u"zfs"_s,     u"bcachefs"_s,    u"nilfs2"_s,
            u"vfat"_s,      u"msdos"_s,   u"exfat"_s,   u"ntfs"_s,        u"ntfs3"_s,
            u"hfs"_s,       u"hfsplus"_s, u"iso9660"_s, u"udf"_s,         u"squashfs"_s,
            u"erofs"_s,     u"overlay"_s, u"tmpfs"_s,   u"ramfs"_s,       u"rootfs"_s,
            u"devtmpfs"_s,  u"devpts"_s,  u"proc"_s,    u"sysfs"_s,       u"cgroup"_s,
            u"cgroup2"_s,   u"debugfs"_s, u"tracefs"_s, u"securityfs"_s,  u"configfs"_s,
            u"hugetlbfs"_s, u"mqueue"_s,  u"pstore"_s,  u"bpf"_s,         u"efivarfs"_s,
            u"selinuxfs"_s, u"fusectl"_s, u"nsfs"_s,    u"binfmt_misc"_s,
        };
        return types.contains(type);
    };
    // "/" is always at hand; what lies between it and the mount has to answer too.
    const Mount *at = &mount;
    while (at && answersItself(at->type) && at->point != u"/"_s) {
        const Mount *above = mountOf(PathText::parent(at->point));
        if (!above || above->point == u"/"_s)
            return true;
        at = above;
    }
    return !at || answersItself(at->type);
}

bool MountTable::hasSlow() const
{
    return std::ranges::any_of(_mounts, [this](const Mount &mount) { return !isLocal(mount); });
}

const Mount *MountTable::slowMountOnTheWay(const QString &path) const
{
    return slowMountOnTheWay({}, path);
}

const Mount *MountTable::slowMountOnTheWay(const QString &folder, const QString &path) const
{
    constexpr int MostLinks = 40; // as the kernel has it
    QStringList ahead = PathText::components(path);
    QString reached = folder;
    for (int links = 0; !ahead.isEmpty();) {
        const QString component = ahead.takeFirst();
        if (component == u"."_s)
            continue;
        const bool up = component == u".."_s;
        const QString next = component == u"/"_s ? component
            : up                                 ? PathText::parent(reached)
                                                 : PathText::joined(reached, component);
        const Mount *mount = mountOf(next);
        if (mount && !isLocal(*mount))
            return mount;
        const auto target = up ? std::nullopt : linkTarget(next);
        if (!target) {
            reached = next;
        } else if (++links <= MostLinks) {
            ahead = PathText::components(*target) + ahead;
        } else {
            break;
        }
    }
    return nullptr;
}

bool MountTable::isVolume(const Mount &mount, const QString &volumesFolder)
{
    if (mount.point == u"/"_s || mount.point.startsWith(volumesFolder + u'/'))
        return true;
    // Disks have a device node; loop devices are mostly packages of installed software.
    const bool disk =
        mount.source.startsWith(u"/dev/"_s) && !mount.source.startsWith(u"/dev/loop"_s);
    static const QSet<QString> systemFolders { u"boot"_s, u"efi"_s,  u"snap"_s,
                                               u"var"_s,  u"proc"_s, u"sys"_s };
    const bool system = systemFolders.contains(mount.point.section(u'/', 1, 1));
    return mount.root == u"/"_s && disk && !system;
}
