#include "operations/Packing.h"

#include "files/MountTable.h"
#include "tests/operations/DeskWorld.h"
#include "tests/support/LongArchive.h"
#include "tests/support/Watched.h"
#include "widgets/ElidedLabel.h"

#include <QRegularExpression>

#include <csignal>

namespace {

struct ArchiveDesk : Desk {
    using Desk::Desk;

    // Names as "a/b".
    void pack(const QString &names, const QString &archive = u"a"_s)
    {
        QStringList paths;
        for (const QString &name : names.split(u'/'))
            paths.append(PathText::joined(source, name));
        // The person has agreed to what stands there now.
        operations.archiveItems(
            paths, destination, archive,
            fileStatus(PathText::joined(destination, archiveFileName(archive)), Links::NoFollow));
        operations.drain();
    }
    // As in a folder that everybody may write to: the hidden one goes away, a private one comes.
    void swapHiddenFolder() const
    {
        folder.shell(uR"(cd to; hidden=$(echo .twinleaf-*); mv "$hidden" ../away
                         mkdir -m 700 "$hidden"; echo private > "$hidden/victim")"_s);
    }
    void unpack(const QString &archive, const QString &folderName)
    {
        operations.unpackArchive(folder.path(archive), folder.path(folderName));
        operations.drain();
    }
    int leftovers() { return int(folder.names(u"to"_s).filter(u".twinleaf-"_s).size()); }
    const ArchiveSheet &sheet() const { return *window.findChild<ArchiveSheet *>(); }
    QString title() const { return sheet().findChild<ElidedLabel *>()->text(); }
    // What an archive in the destination holds, read by another program.
    QString members(const QString &archive = u"a.zip"_s)
    {
        folder.shell(u"rm -rf seen; mkdir seen; bsdtar -xf 'to/%1' -C seen"_s.arg(archive));
        return treeOf(folder, { u"seen"_s }).remove(u"seen/"_s);
    }
};

} // namespace

class tst_Archives : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("PATH", QByteArray(TWINLEAF_DITTO_FOLDER ":") + qgetenv("PATH"));
    }

    void plainNamesGoThroughTheShell()
    {
        ArchiveDesk desk(u"from/a b=1, from/c=2"_s);
        desk.pack(u"a b/c"_s, u"pack"_s);
        // Written under a name that nobody sees.
        QCOMPARE(
            desk.programs.commandLines.value(0).replace(QRegularExpression(u"/proc/\\d+/fd/\\d+"_s),
                                                        u"HIDDEN"_s),
            u"cd \"%1\" && /usr/bin/zip -r \"HIDDEN/pack.zip\" \"a b\" \"c\" "_s.arg(desk.source));
        QCOMPARE(desk.members(u"pack.zip"_s), u"a b=1, c=2"_s);
        QCOMPARE(desk.title(), u"Archiving to pack..."_s);
        QVERIFY(!desk.sheet().isVisible());

        desk.pack(u"c"_s, u"pack"_s); // replaced as a whole
        QCOMPARE(desk.members(u"pack.zip"_s), u"c=2"_s);
        QCOMPARE(desk.folder.names(u"to"_s), QStringList { u"pack.zip"_s });
        QCOMPARE(archiveFileName(u"backup.zip"_s), u"backup.zip"_s);
        QCOMPARE(archiveFileName(u"backup.ZIP"_s), u"backup.ZIP.zip"_s);
        QCOMPARE(archiveFileName(u".zip"_s), u".zip.zip"_s);
    }

    void namesAreDataToShellAndZip()
    {
        for (const QString &name :
             { u"-m"_s, u"-"_s, u"--"_s, u"@"_s, u"-@"_s, u"$(touch ran)"_s, u"`touch ran`"_s,
               u"\"; touch ran; \""_s, u"a\nb"_s, u"'"_s, u"*"_s, u"[a]"_s, u"~"_s, u"&"_s, u"!x"_s,
               u"\u00FC"_s, QString(u'x' + QString(QChar(0xDCFF))) }) {
            ArchiveDesk desk(u"from/tree/empty/, from/tree/deep=deep, out/"_s);
            desk.folder.write(u"from/"_s + name, "content");
            desk.pack(name + u"/tree"_s, name + u".zip"_s);
            QVERIFY2(desk.folder.names(u"from"_s).size() == 2, qPrintable(name));
            QVERIFY2(desk.from(name) == "content", qPrintable(name));
            QCOMPARE(desk.folder.names(u"to"_s), QStringList { name + u".zip"_s });

            desk.unpack(u"to/"_s + name + u".zip"_s, u"out"_s);
            QVERIFY2(desk.folder.read(u"out/"_s + name) == "content", qPrintable(name));
            QCOMPARE(treeOf(desk.folder, { u"out/tree"_s }),
                     u"out/tree/deep=deep, out/tree/empty/"_s);
            QVERIFY2(desk.folder.names(u"out"_s).size() == 2, qPrintable(name));
        }
    }

    void moreNamesThanOneRunTakes()
    {
        // One line of the shell, too long a line, too many for one run.
        for (const auto &[count, shells, runs] :
             { std::tuple(500, 1, 0), { 600, 0, 1 }, { 4600, 0, 2 } }) {
            ArchiveDesk desk;
            QStringList names;
            for (int number = 0; number < count; ++number) {
                names.append(QString::number(number).rightJustified(240, u'x'));
                if (number % 50 == 0) // zip passes over the others
                    desk.folder.write(u"from/"_s + names.last());
            }
            desk.alerts.answer(Alert::Ok);
            desk.pack(names.join(u'/'), u"many"_s);
            QVERIFY(desk.alerts.last().details.contains(u"name not matched: x"_s));
            QCOMPARE(desk.programs.commandLines.size(), shells);
            QCOMPARE(desk.programs.runs.size(), runs);
            QCOMPARE(desk.members(u"many.zip"_s).count(u'='), count / 50);
        }
    }

    void whatIsThereSurvivesAFailure()
    {
        const struct {
            QString given, items;
            int code; // of zip
            QString archive = u"a"_s;
        } cases[] = {
            { u"to/a.zip=old"_s, u"gone"_s, 12 },
            { u"to/a.zip/, from/x=x"_s, u"x"_s, 15, u"a.zip/x"_s },
            { u"to/a.zip/, from/x=x"_s, u"x"_s, 15 },
            { u"to/a.zip=!old, from/x=x"_s, u"x"_s, 15 },
            // The archive is itself among the items.
            { u"to/a.zip=old, to/x=x"_s, u"a.zip/x"_s, 16 },
            { u"to/a.zip=old, from/twin.zip==to/a.zip"_s, u"twin.zip"_s, 16 },
            { u"to/a.zip=old, from/link->../to/a.zip"_s, u"link"_s, 16 },
            { u"to/a.zip=old, from/deep/link->../../to"_s, u"deep"_s, 16 },
        };
        for (const auto &[given, items, code, archive] : cases) {
            ArchiveDesk desk(given);
            if (!given.contains(u"from"_s))
                desk.source = desk.destination;
            const QString before = desk.tree();
            desk.alerts.answer(Alert::Ok);
            desk.pack(items, archive);
            QCOMPARE(given + desk.alerts.last().text,
                     given + u"Archiving failed! Result code: %1"_s.arg(code << 8));
            QCOMPARE(desk.alerts.last().details.contains(u"is itself among the items"_s),
                     code == 16);
            QCOMPARE(desk.tree(), before);
            QCOMPARE(desk.listed, u"R to "_s);
        }
    }

    void theDestinationMayLieInWhatIsPacked()
    {
        for (const QString &item : { u"to"_s, u"from"_s }) {
            ArchiveDesk desk(u"to/b=b, from/deep/link->../../to"_s);
            desk.source = desk.folder.path();
            desk.pack(item);
            QCOMPARE(desk.members(), item == u"to"_s ? u"to/b=b"_s : u"from/deep/link/b=b"_s);
            QCOMPARE(desk.leftovers(), 0);
        }
    }

    // While zip works.
    void whatComesToTheNameIsKept()
    {
        const QString precious = u"echo -n precious > s; mv s to/a.zip"_s;
        const QString link = u"ln -s ../victim to/a.zip"_s;
        const struct {
            QString given;
            QString script; // of what comes
            QList<Alert::Answer> answers;
            QString left {}; // the archive, if none
        } cases[] = {
            { {}, precious, { Alert::No }, u"to/a.zip=precious"_s },
            { {}, precious, { Alert::Yes } },
            { u"to/a.zip=old"_s, precious, { Alert::No }, u"to/a.zip=precious"_s },
            { u"to/a.zip=old"_s, u"rm to/a.zip"_s, {} },
            { {}, link, { Alert::No }, u"to/a.zip->../victim"_s },
            { {}, link, { Alert::Yes } },
            { {}, u"mkdir to/a.zip"_s, { Alert::Ok }, u"to/a.zip/"_s },
        };
        for (const auto &row : cases) {
            ArchiveDesk desk(u"from/x=x, victim=victim, "_s + row.given);
            desk.alerts.answer(row.answers);
            desk.programs.whilePacking = [&] { desk.folder.shell(row.script); };
            desk.pack(u"x"_s);
            QCOMPARE(desk.folder.read(u"victim"_s), "victim");
            QCOMPARE(desk.folder.names(u"to"_s), QStringList { u"a.zip"_s });
            if (row.left.isEmpty())
                QCOMPARE(desk.members(), u"x=x"_s);
            else
                QCOMPARE(row.script + treeOf(desk.folder, { u"to"_s }), row.script + row.left);
        }
    }

    void whatCameInBetweenIsToldThoughNothingIsPlaced()
    {
        ArchiveDesk desk(u"from/x=x, to/a.zip=old"_s);
        int exchanges = 0; // there and back
        const Watched watched([&](Call call, const char *, unsigned flags) {
            if (call == Call::Rename && (flags & RENAME_EXCHANGE))
                desk.folder.shell(u"echo -n saved %1 > s; mv s to/a.zip"_s.arg(++exchanges));
            return 0;
        });
        desk.alerts.answer({ Alert::No, Alert::Ok });
        desk.pack(u"x"_s);
        QCOMPARE(treeOf(desk.folder, { u"to"_s, u"trash"_s }),
                 u"to/a.zip=saved 1, trash/a.zip=saved 2"_s);
        QCOMPARE(desk.alerts.last().text, u"Something was left behind."_s);
    }

    void aStickIsWrittenBeforeTheSheetCloses()
    {
        const TestFolder mounts;
        mounts.write(u"table"_s, {});
        MountTable::setSource(mounts.path(u"table"_s));
        for (const QString &job : { u"pack"_s, u"0"_s, u"15"_s, u"1"_s }) {
            ArchiveDesk desk(u"from/x=x"_s);
            mounts.write(u"table"_s,
                         "1 1 0:1 / " + desk.folder.pathInMountTable(u"to"_s)
                             + " rw - fuse.stick stick rw\n");
            int synced = 0;
            const Watched watched([&](Call call, const char *, unsigned) {
                synced += call == Call::SyncAll && desk.sheet().isVisible();
                return call == Call::SyncAll ? EIO : 0;
            });
            desk.programs.before = [&](const QStringList &) { return job.toInt(); };
            desk.alerts.answer(QList<Alert::Answer>(job == u"1" ? 2 : 1, Alert::Ok));
            if (job == u"pack")
                desk.pack(u"x"_s);
            else
                desk.unpack(u"from/a.zip"_s, u"to"_s);
            QCOMPARE(job + QString::number(synced), job + u'1');
            QCOMPARE(desk.alerts.last().text, u"Not everything could be written to the disk."_s);
        }
        MountTable::setSource(u"/proc/self/mountinfo"_s);
    }

    void aSwappedHiddenFolderIsLeftAlone()
    {
        for (const QString &old : { QString(), u"to/a.zip=old"_s }) {
            ArchiveDesk desk(u"from/x=x, "_s + old);
            desk.programs.whilePacking = [&] { desk.swapHiddenFolder(); };
            desk.pack(u"x"_s);
            QCOMPARE(desk.members(), u"x=x"_s);
            desk.folder.shell(u"cat to/.twinleaf-*/victim > victim"_s);
            QCOMPARE(desk.folder.read(u"victim"_s), "private\n");
            QVERIFY(desk.folder.names(u"away"_s).isEmpty());
        }
    }

    void whatZipLeavesOutIsNamed()
    {
        const std::tuple<QString, QString, QString> cases[] = {
            { u"from/gone->nowhere"_s, u"Not everything could be packed."_s,
              u"name not matched: gone"_s },
            // Nobody may read that file.
            { u"from/gone->/proc/sys/vm/drop_caches"_s, u"Archiving failed! Result code: 4608"_s,
              u"could not open for reading: gone"_s },
        };
        for (const auto &[given, text, detail] : cases) {
            ArchiveDesk desk(u"from/x=x, to/a.zip=old, "_s + given);
            desk.alerts.answer(Alert::Ok);
            desk.pack(u"x/gone"_s);
            QCOMPARE(desk.alerts.last().text, text);
            QVERIFY2(desk.alerts.last().details.startsWith(detail),
                     qPrintable(desk.alerts.last().details));
            QCOMPARE(desk.members(), u"x=x"_s);
            QCOMPARE(treeOf(desk.folder, { u"trash"_s }), u"trash/a.zip=old"_s);

            // With nothing in it the new one is of no use.
            makeTree(desk.folder, u"to/b.zip=old"_s);
            desk.alerts.answer(Alert::Ok);
            desk.pack(u"gone"_s, u"b"_s);
            QCOMPARE(desk.to(u"b.zip"_s), "old");
        }
    }

    void linksAreNotFollowedInCircles()
    {
        QString often = u"from/d30/x=x"_s;
        for (int level = 0; level < 30; ++level)
            for (const QString &link : { u"l"_s, u"m"_s })
                often += u", from/d%1/%2->../d%3"_s.arg(level).arg(link).arg(level + 1);
        const std::tuple<QString, QString, QString> cases[] = {
            { u"from/d/a->., from/d/b->., from/d/x=x"_s, u"d"_s, u"d/a->., d/b->., d/x=x"_s },
            { u"from/d/up->.., from/d/x=x"_s, u"d"_s, u"d/up->.., d/x=x"_s },
            { often, u"d0"_s, u"d0/l->../d1, d0/m->../d1"_s },
            // No circle: followed as ever.
            { u"from/d/a->../e, from/d/b->../e, from/e/x=x"_s, u"d"_s, u"d/a/x=x, d/b/x=x"_s },
        };
        for (const auto &[given, item, expected] : cases) {
            ArchiveDesk desk(u"from/y->x, from/x=x, "_s + given);
            const bool circle = expected.contains(u"->"_s);
            if (circle)
                desk.alerts.answer(Alert::Ok);
            desk.pack(item + u"/y"_s);
            QCOMPARE(desk.programs.commandLines.isEmpty(), circle);
            // The link that has nothing to do with it is followed all the same.
            QCOMPARE(desk.members(), expected + u", y=x"_s);
            QCOMPARE(desk.alerts.last().details.contains(u"leads in a circle"_s), circle);
        }
    }

    void theEndOfUnpackingIsToldOnceOrNever()
    {
        const std::tuple<QString, int, bool> cases[] = {
            { u"x.zip"_s, 0, false },
            { u"x.ZIP"_s, 15, false },
            { u"x.cpgz"_s, 128 + SIGTERM, false },
            { u"x.tar"_s, 1, true },
            { u"x.zip"_s, 128 + SIGSEGV, true },
        };
        for (const auto &[name, exitStatus, failed] : cases) {
            ArchiveDesk desk;
            desk.programs.before = [status = exitStatus](const QStringList &) { return status; };
            if (failed)
                desk.alerts.answer(Alert::Ok);
            desk.unpack(u"from/"_s + name, u"to"_s);
            QStringList expected { u"/usr/bin/ditto"_s, u"-x"_s };
            if (name == u"x.zip"_s) // by its extension
                expected.append(u"-k"_s);
            expected << PathText::joined(desk.source, name) << desk.destination;
            QCOMPARE(desk.programs.runs, QList<QStringList> { expected });
            QCOMPARE(desk.title(), u"Unpacking '%1'..."_s.arg(name));
            QCOMPARE(desk.alerts.last().text, failed ? u"Unpacking failed!"_s : QString());
            QVERIFY(!desk.sheet().isVisible());
            QCOMPARE(desk.listed, u"R to "_s);
        }
    }

    void onlyPanesThatShowTheFolderAreListedAgain()
    {
        ArchiveDesk desk(u"from/x=x"_s);
        const auto listedWith = [&](const QString &left, const QString &right) {
            desk.showBoth(left, right);
            desk.pack(u"x"_s);
            return desk.listed;
        };
        QCOMPARE(listedWith(desk.destination, desk.destination), u"L to R to "_s);
        QCOMPARE(listedWith(desk.destination, desk.source), u"L to "_s);
        QCOMPARE(listedWith(desk.source, desk.trash), u""_s);
    }

    void cancellingLeavesNothing()
    {
        for (const QString &end : { u"cancelled"_s, u"cancelled at once"_s, u"quitting"_s }) {
            for (const bool packs : { false, true }) {
                ArchiveDesk desk;
                // Either takes seconds: nothing may be whole before it is told to end.
                writeLongArchive(desk.folder, u"from"_s);
                desk.folder.shell(u"truncate -s 8G from/big"_s);
                if (packs)
                    desk.operations.archiveItems({ PathText::joined(desk.source, u"big"_s) },
                                                 desk.destination, u"a"_s);
                else
                    desk.operations.unpackArchive(PathText::joined(desk.source, u"a.cpgz"_s),
                                                  desk.destination);
                QVERIFY(desk.operations.anyRunning());
                if (end != u"cancelled at once"_s)
                    QTRY_VERIFY(!desk.folder.names(u"to"_s).isEmpty());
                if (end == u"quitting"_s)
                    desk.operations.stopAll();
                else
                    desk.bus.post(CancelArchiving, {});
                desk.operations.drain();
                QCOMPARE(desk.folder.names(u"to"_s), QStringList());
                QVERIFY(!desk.sheet().isVisible());
                QCOMPARE(desk.listed, u"R to "_s);
            }
        }
    }
};

QTEST_MAIN(tst_Archives)
#include "tst_Archives.moc"
