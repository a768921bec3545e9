#include "files/MountTable.h"
#include "tests/support/TestFolder.h"

namespace {

constexpr auto MountInfo = "22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
                           "23 22 0:5 / /proc rw - proc proc rw\n"
                           "24 22 8:2 / /home rw shared:2 master:1 - ext4 /dev/sda2 rw\n"
                           "25 22 8:17 / /media/me/My\\040Disk\\011\\134 rw - vfat /dev/sdb1 rw\n"
                           "26 22 0:40 / /home/me/server rw - nfs4 host:/export rw\n"
                           "27 22 8:2 /me/work /work rw - ext4 /dev/sda2 rw\n"
                           "28 22 7:1 / /snap/tool/1 ro - squashfs /dev/loop1 ro\n"
                           "29 22 8:3 / /boot/efi rw - vfat /dev/sda3 rw\n"
                           "30 22 8:18 / /system rw - ext4 /dev/sdb2 rw\n"
                           "31 22 0:50 / /home/me/server rw - fuse.sshfs me@host: rw\n"
                           "32 22 8:19 / /media/me/\xFF rw - ext4 /dev/sdb3 rw\n"
                           "34 22 7:2 / /media/me/image rw - vfat /dev/loop2 rw\n"
                           "35 22 0:51 / /media/me/phone rw - fuse.some phone rw\n"
                           "36 22 8:21 / x rw - ext4 /dev/sdc1 rw\n" // no path at all
                           "a line that is none\n"
                           "33 22 8:20 / /cut rw -\n";

} // namespace

class tst_MountTable : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void mountOfIsTheDeepestAndLatest()
    {
        const std::pair<QString, QString> cases[] = {
            { u"/"_s, u"/dev/sda1"_s },
            { u"/homes/me"_s, u"/dev/sda1"_s },
            { u"/home"_s, u"/dev/sda2"_s },
            { u"/home/me/servers"_s, u"/dev/sda2"_s },
            { u"/home/me/server/x"_s, u"me@host:"_s },
            { u"/media/me/My Disk\t\\/x"_s, u"/dev/sdb1"_s },
            { FileName::fromBytes("/media/me/\xFF/x"), u"/dev/sdb3"_s },
        };
        const auto table = MountTable::fromText(MountInfo);
        for (const auto &[path, source] : cases) {
            const Mount *mount = table.mountOf(path);
            QCOMPARE(mount ? mount->source : QString(), source);
        }
    }

    void volumesAreWhatAPersonPlugsIn()
    {
        const auto table = MountTable::fromText(MountInfo);
        QStringList volumes;
        for (const Mount &mount : table.mounts())
            if (MountTable::isVolume(mount, u"/media/me"_s))
                volumes.append(mount.point);
        QCOMPARE(volumes,
                 (QStringList { u"/"_s, u"/home"_s, u"/media/me/My Disk\t\\"_s, u"/system"_s,
                                FileName::fromBytes("/media/me/\xFF"), u"/media/me/image"_s,
                                u"/media/me/phone"_s }));
    }

    void whoHasToAnswerForAPath()
    {
        // Links on a real disk, mounts by a list that says where they would be.
        TestFolder folder;
        for (const QString &name : { u"server/x"_s, u"server/disk"_s, u"local"_s })
            folder.makeFolder(name);
        folder.link(folder.path(u"server"_s), u"local/far"_s);
        folder.link(u"../local/far"_s, u"local/further"_s);
        folder.link(u"ring"_s, u"ring"_s);
        const auto line = [&](const QString &name, const QByteArray &type) {
            return "9 1 0:9 / " + folder.pathInMountTable(name) + " rw - " + type + " s rw\n";
        };
        const auto table = MountTable::fromText(
            "1 1 8:1 / / rw - ext4 /dev/sda1 rw\n" + line(u"server"_s, "never.heard.of")
            + line(u"server/disk"_s, "ext4") + line(u"local"_s, "tmpfs"));
        QVERIFY(table.hasSlow());
        const std::pair<QString, QString> cases[] = {
            { u"server"_s, u"server"_s },
            { u"server/x/y"_s, u"server"_s },
            { u"server/disk"_s, u"server"_s },
            { u"servers"_s, {} },
            { u"local/x"_s, {} },
            { u"local/far/x"_s, u"server"_s },
            { u"local/further"_s, u"server"_s },
            { u"local/far/../x"_s, u"server"_s },
            { u"ring"_s, {} },
            { u"local/../server/x"_s, u"server"_s },
        };
        for (const auto &[path, point] : cases) {
            const Mount *mount = table.slowMountOnTheWay(folder.path(path));
            QCOMPARE(mount ? mount->point : QString(),
                     point.isEmpty() ? QString() : folder.path(point));
        }
        QVERIFY(table.slowMountOnTheWay(folder.path(u"local"_s), u"far/x"_s));
        const Mount *disk = table.mountOf(folder.path(u"server/disk"_s));
        QVERIFY(!table.isLocal(*disk)); // the way there leads over the server
    }
};

QTEST_GUILESS_MAIN(tst_MountTable)
#include "tst_MountTable.moc"
