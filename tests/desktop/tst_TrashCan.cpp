#include "files/MountTable.h"
#include "files/SystemCalls.h"
#include "platform/desktop/DesktopTrashCan.h"
#include "platform/desktop/MountWatch.h"
#include "tests/support/AsOnFat.h"
#include "tests/support/OwnMounts.h"
#include "tests/support/TestTree.h"
#include "tests/support/Watched.h"

#include <algorithm>
#include <csignal>
#include <functional>
#include <sys/wait.h>

// What lies in the Trash comes back whole, or stays; and what nobody listed is left alone.
class tst_TrashCan : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("XDG_DATA_HOME", folder.bytes(u"data"_s)); } // read once

    void init()
    {
        folder.shell(u"shopt -s dotglob; chmod -R u+rwX .; rm -rf ./*"_s);
        makeTree(folder, u"data/Trash/files/, data/Trash/info/, at/"_s);
    }

    void noHalfOfAFolderIsOffered()
    {
        int step = 0;
        for (bool died = true; died; ++step) {
            init();
            put(u"d"_s, {}, recordOf(u"at/d"_s));
            makeTree(folder, u"data/Trash/files/d/x=, data/Trash/files/d/e/y="_s);
            const TrashedItem item = only();
            const pid_t child = fork();
            if (child == 0) {
                int seen = 0;
                const Watched watched([&](Call call, const char *, unsigned) {
                    if ((call == Call::Rename || call == Call::Remove) && seen++ == step)
                        kill(getpid(), SIGKILL);
                    return 0;
                });
                can.remove(item);
                _exit(0);
            }
            int status = 0;
            waitpid(child, &status, 0);
            died = WIFSIGNALED(status);
            QCOMPARE(treeOf(folder, { u"data/Trash/files"_s }),
                     died && step == 0 ? u"data/Trash/files/d/e/y=, data/Trash/files/d/x="_s
                                       : QString());
        }
        QVERIFY(step > 4);
        // Who looks into the Trash next takes along what is left, and its record.
        put(u"other"_s, u"x"_s, recordOf(u"at/other"_s));
        makeTree(folder,
                 u"data/Trash/expunged/rest/z=z, data/Trash/info/rest.trashinfo=, "
                 "data/Trash/expunged/other/z=z"_s);
        QCOMPARE(only().name, u"other"_s);
        QCOMPARE(folder.names(u"data/Trash/expunged"_s), QStringList());
        QCOMPARE(folder.names(u"data/Trash/info"_s), QStringList { u"other.trashinfo"_s });
    }

    void recordsThatLie_data()
    {
        QTest::addColumn<QByteArray>("record");
        QTest::addColumn<QString>("origin"); // below the test's folder; "": it is told as broken
        const auto row = [](const char *name, const QByteArray &record, const QString &origin) {
            QTest::newRow(name) << record << origin;
        };
        const QByteArray head = "[Trash Info]\n";
        row("absolute", head + "Path=~/at/x\nDeletionDate=2026-01-02T03:04:05\n", u"at/x"_s);
        row("below the folder that holds the Trash", head + "Path=sub/x", u"data/sub/x"_s);
        row("any bytes", head + "Path=~/at/%FF%0A%25", FileName::fromBytes("at/\xFF\n%"));
        row("the first of two", head + "Path=~/at/1\nPath=~/at/2\n", u"at/1"_s);
        row("doubled slashes", head + "Path=~//at/./x/", u"at/x"_s);
        row("no path", head + "DeletionDate=2026-01-02T03:04:05\n", {});
        row("nothing", {}, {});
        row("another file", "[Desktop Entry]\nPath=~/at/x\n", {});
        row("empty", head + "Path=\n", {});
        row("up", head + "Path=~/at/../x", {});
        row("up, encoded", head + "Path=~/at/%2E%2e/x", {});
        row("NUL", head + "Path=~/at/x%00y", {});
        row("half a code", head + "Path=~/at/x%4", {});
        row("no code", head + "Path=~/at/x%zz", {});
        row("the root", head + "Path=/", {});
        row("the Trash", head + "Path=~/data/Trash/files/x", {});
        row("a gigabyte", head + "Path=/" + QByteArray(70'000, 'x'), {});
    }
    void recordsThatLie()
    {
        QFETCH(QByteArray, record);
        QFETCH(QString, origin);
        put(u"i"_s, u"content"_s, record.replace("~", folder.path().toUtf8()));
        const TrashedItem item = only();
        QCOMPARE(item.broken.isEmpty(), !origin.isEmpty());
        QCOMPARE(item.origin, origin.isEmpty() ? QString() : folder.path(origin));
        const QString before = treeOf(folder, { u"data/Trash/files"_s });
        const TrashEnd end = can.putBack(item, TrashCan::Folders::Make);
        if (origin.isEmpty()) {
            QCOMPARE(end.what, TrashEnd::Failed);
            QCOMPARE(treeOf(folder, { u"data/Trash/files"_s, u"at"_s }), before);
            QCOMPARE(can.remove(item).reason, QString());
            QCOMPARE(folder.names(u"data/Trash/info"_s), QStringList());
        } else {
            QCOMPARE(end.reason, QString());
            QCOMPARE(folder.read(origin), "content");
            QVERIFY(folder.names(u"data/Trash/info"_s).isEmpty());
        }
    }

    void putBackNeverReplaces()
    {
        put(u"i"_s, u"old"_s, recordOf(u"at/x"_s));
        const TrashedItem item = only();
        for (const QString &taken : { u"at/x=new"_s, u"at/x/in=new"_s, u"at/x->nowhere"_s }) {
            makeTree(folder, taken);
            QCOMPARE(can.putBack(item, TrashCan::Folders::Keep).reason,
                     u"Something stands at its place now."_s);
            QCOMPARE(treeOf(folder, { u"at"_s }), taken);
            QCOMPARE(only().origin, item.origin);
            folder.shell(u"rm -r at/x"_s);
        }
        QCOMPARE(can.putBack(item, TrashCan::Folders::Keep).what, TrashEnd::Done);
        QCOMPARE(treeOf(folder, { u"at"_s, u"data"_s }),
                 u"at/x=old, data/Trash/files/"
                 ", data/Trash/info/"_s);
    }

    void missingFoldersAreMadeWhenWanted()
    {
        put(u"i"_s, u"old"_s, recordOf(u"at/a/b/x"_s));
        QCOMPARE(can.putBack(only(), TrashCan::Folders::Keep).what, TrashEnd::NoFolder);
        QCOMPARE(folder.names(u"at"_s), QStringList());
        QCOMPARE(can.putBack(only(), TrashCan::Folders::Make).what, TrashEnd::Done);
        QCOMPARE(folder.read(u"at/a/b/x"_s), "old");
        // A file stands in the way.
        put(u"i"_s, u"old"_s, recordOf(u"at/a/b/x/y"_s));
        QCOMPARE(can.putBack(only(), TrashCan::Folders::Make).what, TrashEnd::Failed);
        QCOMPARE(folder.read(u"data/Trash/files/i"_s), "old");
    }

    void anotherItemThanTheListedOneStays()
    {
        put(u"i"_s, u"old"_s, recordOf(u"at/x"_s));
        const TrashedItem item = only();
        folder.shell(u"mv data/Trash/files/i kept; echo -n other > data/Trash/files/i"_s);
        QCOMPARE(can.putBack(item, TrashCan::Folders::Keep).what, TrashEnd::Failed);
        QCOMPARE(can.remove(item).what, TrashEnd::Failed);
        QCOMPARE(folder.read(u"data/Trash/files/i"_s), "other");
        // Nor one whose record has come to tell another place.
        folder.shell(u"mv kept data/Trash/files/i"_s);
        put(u"i"_s, {}, recordOf(u"at/y"_s));
        QCOMPARE(can.putBack(item, TrashCan::Folders::Keep).what, TrashEnd::Failed);
        // Nor a locked one.
        folder.setAttribute(u"data/Trash/files/i"_s, "user.twinleaf.locked", "1");
        QCOMPARE(can.remove(only()).reason, u"The item is locked."_s);
        // What is gone by itself leaves nothing behind.
        folder.shell(u"rm data/Trash/files/i"_s);
        QVERIFY(can.items(nullptr).isEmpty());
        QCOMPARE(can.remove(item).what, TrashEnd::Done);
        QCOMPARE(folder.names(u"data/Trash/info"_s), QStringList());
    }

    void itemsAreKnownByWhatTheyAre()
    {
        makeTree(folder, u"at/to/, link->at/to"_s);
        put(u"x.2"_s, u"mine"_s, recordOf(u"at/to/x"_s));
        const auto mine = ItemTrace::of(only().status);
        ItemTrace nobodys = mine;
        nobodys.identity.inode += 100'000;
        put(u"x"_s, u"other"_s, recordOf(u"at/to/x"_s));
        const auto ends =
            can.putBack({ { mine, folder.path(u"elsewhere/x"_s) },
                          { nobodys, folder.path(u"at/to/x"_s) },
                          { mine, folder.path(u"link/x"_s) } }, // by another name of the folder
                        TrashCan::Folders::Keep);
        QVERIFY(ends[0].what == TrashEnd::Failed && ends[1].what == TrashEnd::Failed);
        QCOMPARE(ends[2].reason, QString());
        QCOMPARE(folder.read(u"at/to/x"_s), "mine");
        QCOMPARE(folder.read(u"data/Trash/files/x"_s), "other");
    }

    void eachNameOfAFileComesBack()
    {
        put(u"a"_s, u"x"_s, recordOf(u"at/a"_s));
        put(u"b"_s, {}, recordOf(u"at/b"_s));
        folder.shell(u"cd data/Trash/files && ln a b"_s);
        const auto file = ItemTrace::of(can.items(nullptr).first().status);
        const auto ends =
            can.putBack({ { file, folder.path(u"at/b"_s) }, { file, folder.path(u"at/a"_s) } },
                        TrashCan::Folders::Keep);
        QCOMPARE(ends[0].reason + ends[1].reason, QString());
        QCOMPARE(treeOf(folder, { u"at"_s }), u"at/a=x, at/b=x"_s);
    }

    // Read anew, FAT has other inode numbers: then only what is unchanged is known again.
    void whereNumbersAreMadeUpTimesDecide_data()
    {
        using Way = std::function<TrashEnd(TrashCan &, const TrashedItem &)>;
        QTest::addColumn<Way>("way");
        QTest::newRow("put back") << Way(
            [](TrashCan &trash, const TrashedItem &item) { return trash.putBack(item); });
        QTest::newRow("remove") << Way(
            [](TrashCan &trash, const TrashedItem &item) { return trash.remove(item); });
        QTest::newRow("undo") << Way([](TrashCan &trash, const TrashedItem &item) {
            return trash.putBack({ { ItemTrace::of(item.status, false), item.origin } }).first();
        });
    }
    void whereNumbersAreMadeUpTimesDecide()
    {
        using Way = std::function<TrashEnd(TrashCan &, const TrashedItem &)>;
        QFETCH(Way, way);
        onFat = true;
        const auto noMore = qScopeGuard([] { onFat = false; });
        for (const bool edited : { false, true }) {
            init();
            put(u"i"_s, u"x"_s, recordOf(u"at/i"_s));
            const TrashedItem item = only();
            folder.shell(u"cd data/Trash; cp -a files new; rm -r files; mv new files"_s);
            if (edited)
                folder.write(u"data/Trash/files/i"_s, "other");
            QCOMPARE(way(can, item).what, edited ? TrashEnd::Failed : TrashEnd::Done);
            QCOMPARE(folder.names(u"data/Trash/files"_s).isEmpty(), !edited);
        }
    }

    void trashThatIsNotTrusted_data()
    {
        QTest::addColumn<QString>("change");
        QTest::newRow("a link") << u"mv data/Trash away; ln -s ../away data/Trash"_s;
        QTest::newRow("files is a link")
            << u"mv data/Trash/files f; ln -s ../../f data/Trash/files"_s;
        QTest::newRow("open to everybody") << u"chmod 777 data/Trash"_s;
        QTest::newRow("no folder") << u"rm -r data/Trash; touch data/Trash"_s;
    }
    void trashThatIsNotTrusted()
    {
        QFETCH(QString, change);
        put(u"i"_s, u"x"_s, recordOf(u"at/x"_s));
        const TrashedItem item = only();
        folder.shell(change);
        QStringList unread;
        QVERIFY(can.items(&unread).isEmpty());
        QVERIFY2(unread.size() == 1 && unread[0].startsWith(folder.path(u"data/Trash: "_s)),
                 qPrintable(unread.join(u'\n')));
        QCOMPARE(can.putBack(item, TrashCan::Folders::Keep).what, TrashEnd::Failed);
        QCOMPARE(can.remove(item).what, TrashEnd::Failed);
    }

    void removalKeepsToTheItem()
    {
        makeTree(folder,
                 u"outside/kept=x, data/Trash/files/i/closed/deep/in=x,"
                 " data/Trash/files/i/link->~/outside, data/Trash/files/l->~/outside"_s);
        folder.shell(u"chmod 500 data/Trash/files/i/closed data/Trash/files/i"_s);
        folder.makeFolder(u"data/Trash/files/m/point"_s);
        folder.write(u"data/Trash/files/m/kept"_s);
        TestMount mount(folder.path(u"data/Trash/files/m/point"_s));
        mount.show(folder.path(u"outside"_s));
        const auto items = can.items(nullptr);
        QCOMPARE(items.size(), 3);
        for (const TrashedItem &item : items)
            QCOMPARE(can.remove(item).what, item.name == u"m" ? TrashEnd::Failed : TrashEnd::Done);
        QCOMPARE(treeOf(folder, { u"outside"_s, u"data/Trash/files"_s }),
                 u"outside/kept=x, data/Trash/files/m/kept=, data/Trash/files/m/point/kept=x"_s);
    }

    void anotherVolume()
    {
        folder.makeFolder(u"volume"_s);
        TestMount mount(folder.path(u"volume"_s));
        mount.fresh("");
        const QString user = QString::number(getuid());
        const QString own = u"volume/.Trash-%1/"_s.arg(user);
        const QString common = u"volume/.Trash/%1/"_s.arg(user);
        makeTree(folder,
                 u"%1files/a=a, %1files/up=x, %1files/out=x, %1files/led=x, %2files/b=b, "
                 "volume/to/, volume/link->~/at"_s.arg(own, common));
        const auto record = [&](const QString &name, const QByteArray &path) {
            folder.write(name, "[Trash Info]\nPath=" + path + '\n');
        };
        folder.makeFolder(own + u"info"_s);
        folder.makeFolder(common + u"info"_s);
        record(own + u"info/a.trashinfo"_s, "to/a");
        record(own + u"info/up.trashinfo"_s, "../at/x");
        record(own + u"info/out.trashinfo"_s, folder.path(u"at/x"_s).toUtf8());
        record(own + u"info/led.trashinfo"_s, "link/x");
        record(common + u"info/b.trashinfo"_s, "to/b");
        const auto names = [&] {
            QStringList all;
            for (const TrashedItem &item : can.items(nullptr))
                all += item.broken.isEmpty() ? item.name : item.name + u'!';
            all.sort();
            return all.join(u' ');
        };
        // One for everybody counts only where nobody can take another's place.
        QCOMPARE(names(), u"a led out! up!"_s);
        folder.shell(u"chmod 1777 volume/.Trash"_s);
        QCOMPARE(names(), u"a b led out! up!"_s);
        for (const TrashedItem &item : can.items(nullptr))
            QCOMPARE(can.putBack(item, TrashCan::Folders::Make).what,
                     item.name.size() == 1 ? TrashEnd::Done : TrashEnd::Failed);
        QCOMPARE(treeOf(folder, { u"volume/to"_s, u"at"_s }), u"volume/to/a=a, volume/to/b=b"_s);
        // Nothing comes from a volume that cannot be written to, and nothing is taken from it.
        mount.makeReadOnly();
        for (const TrashedItem &item : can.items(nullptr)) {
            QCOMPARE(can.putBack(item, TrashCan::Folders::Keep).what, TrashEnd::Failed);
            QCOMPARE(can.remove(item).reason,
                     item.status.kind == FileKind::Regular ? u"Read-only file system"_s
                                                           : QString());
        }
        QCOMPARE(names(), u"led out! up!"_s);
    }

    void homeTrashOfAnotherVolumesItem()
    {
        folder.makeFolder(u"volume"_s);
        TestMount mount(folder.path(u"volume"_s));
        mount.fresh("");
        put(u"i"_s, u"x"_s, recordOf(u"volume/x"_s));
        QCOMPARE(can.putBack(only(), TrashCan::Folders::Keep).what, TrashEnd::Failed);
        QCOMPARE(only().origin, folder.path(u"volume/x"_s));
        QCOMPARE(folder.names(u"volume"_s), QStringList());
    }

    void aVolumeThatMayNotAnswerIsTold()
    {
        const QByteArray volume = volumesFolder().toUtf8() + "/stick";
        folder.write(u"mounts"_s,
                     "1 1 8:1 / / rw - ext4 /dev/a rw\n2 1 0:9 / " + volume
                         + " rw - fuseblk b rw\n");
        MountTable::setSource(folder.path(u"mounts"_s));
        QStringList unread;
        can.items(&unread);
        MountTable::setSource(u"/proc/self/mountinfo"_s);
        QCOMPARE(unread,
                 QStringList { QString::fromUtf8(volume) + u": left out, as it may not answer"_s });
    }

private:
    QByteArray recordOf(const QString &origin) const
    {
        return "[Trash Info]\nPath=" + folder.bytes(origin).replace(' ', "%20")
            + "\nDeletionDate=2026-01-02T03:04:05\n";
    }
    void put(const QString &name, const QString &content, const QByteArray &record) const
    {
        if (!content.isEmpty())
            folder.write(u"data/Trash/files/"_s + name, content.toUtf8());
        folder.write(u"data/Trash/info/%1.trashinfo"_s.arg(name), record);
    }
    TrashedItem only()
    {
        const auto items = can.items(nullptr);
        return items.size() == 1 ? items.first() : TrashedItem { .broken = u"not one"_s };
    }

    const TestFolder folder;
    DesktopTrashCan can;
};

TWINLEAF_MAIN_WITH_MOUNTS(tst_TrashCan)
#include "tst_TrashCan.moc"
