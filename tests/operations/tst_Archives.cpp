#include "operations/Archives.h"

#include "tests/operations/DeskWorld.h"

#include <QTest>

#include <csignal>

namespace {

struct ArchiveDesk : Desk {
    using Desk::Desk;

    void pack(const QStringList &names, const QString &archive)
    {
        QStringList paths;
        for (const QString &name : names)
            paths.append(PathText::joined(source, name));
        operations.archiveItems(paths, destination, archive);
        operations.drain();
    }
    void unpack(const QString &archive, const QString &folderName)
    {
        operations.unpackArchive(folder.path(archive), folder.path(folderName));
        operations.drain();
    }
    // What an archive in the destination holds, read by another program.
    QStringList members(const QString &archive)
    {
        folder.shell(u"rm -rf seen; mkdir seen; bsdtar -xf 'to/%1' -C seen"_s.arg(archive));
        return folder.names(u"seen"_s);
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
        desk.pack({ u"a b"_s, u"c"_s }, u"pack"_s);
        QCOMPARE(desk.programs.commandLines,
                 QStringList { u"cd \"%1\" && /usr/bin/zip -r \"%2/pack.zip\" \"a b\" \"c\" "_s.arg(
                     desk.source, desk.destination) });
        QCOMPARE(desk.members(u"pack.zip"_s), QStringList({ u"a b"_s, u"c"_s }));
        QCOMPARE(desk.archiveSheet.titles, QStringList { u"Archiving to pack..."_s });
        QVERIFY(!desk.archiveSheet.visible);
    }

    void theArchiveAlwaysEndsInZip()
    {
        QCOMPARE(archiveFileName(u"backup"_s), u"backup.zip"_s);
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
            desk.pack({ name, u"tree"_s }, name + u".zip"_s);
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
            desk.pack(names, u"many"_s);
            QCOMPARE(desk.programs.commandLines.size(), shells);
            QCOMPARE(desk.programs.runs.size(), runs);
            QCOMPARE(desk.members(u"many.zip"_s).size(), count / 50);
        }
    }

    void whatIsThereSurvivesAFailure()
    {
        const std::tuple<QString, QString, int> cases[] = {
            { u"gone"_s, u"old"_s, 12 },
            { u"x"_s, u"folder"_s, 15 },
            { u"x"_s, u"locked"_s, 15 },
            { u"x"_s, u"folder.zip/x"_s, 15 },
        };
        for (const auto &[item, archive, code] : cases) {
            ArchiveDesk desk(u"from/x=x, to/folder.zip/, to/locked.zip=!old, to/old.zip=old"_s);
            const QString before = desk.tree();
            desk.answer({ Alert::Ok });
            desk.pack({ item }, archive);
            const Alert alert = desk.lastAlert();
            QCOMPARE(archive + alert.text,
                     archive + u"Archiving failed! Result code: %1"_s.arg(code << 8));
            QCOMPARE(alert.title, u"Twinleaf - Error"_s);
            QVERIFY(alert.style == Alert::Style::Informational);
            QCOMPARE(desk.tree(), before);
            QCOMPARE(desk.listed, QStringList { u"right to"_s });
        }
    }

    void anOldArchiveIsNeitherAddedToNorPacked()
    {
        ArchiveDesk desk(u"from/old=old, from/new=new"_s);
        desk.pack({ u"old"_s }, u"a"_s);
        desk.pack({ u"new"_s }, u"a"_s);
        QCOMPARE(desk.members(u"a.zip"_s), QStringList { u"new"_s });
        QCOMPARE(desk.folder.names(u"to"_s), QStringList { u"a.zip"_s });

        makeTree(desk.folder, u"to/a.zip=old, to/b=b"_s);
        desk.operations.archiveItems({ desk.destination }, desk.destination, u"a.zip"_s);
        desk.operations.drain();
        desk.members(u"a.zip"_s);
        QCOMPARE(treeOf(desk.folder, { u"seen"_s, u"trash"_s }), u"seen/to/b=b, trash/a.zip=old"_s);
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
                desk.answer({ Alert::Ok });
            desk.unpack(u"from/"_s + name, u"to"_s);
            QStringList expected { u"/usr/bin/ditto"_s, u"-x"_s };
            if (name == u"x.zip"_s) // by its extension
                expected.append(u"-k"_s);
            expected << PathText::joined(desk.source, name) << desk.destination;
            QCOMPARE(desk.programs.runs, QList<QStringList> { expected });
            QCOMPARE(desk.archiveSheet.titles, QStringList { u"Unpacking '%1'..."_s.arg(name) });
            QCOMPARE(desk.lastAlert().text, failed ? u"Unpacking failed!"_s : QString());
            QVERIFY(!desk.archiveSheet.visible);
            QCOMPARE(desk.listed, QStringList { u"right to"_s });
        }
    }

    void onlyPanesThatShowTheFolderAreListedAgain()
    {
        ArchiveDesk desk(u"from/x=x"_s);
        const auto listedWith = [&](const QString &left, const QString &right) {
            desk.show(left, right);
            desk.pack({ u"x"_s }, u"a"_s);
            return desk.listed;
        };
        QCOMPARE(listedWith(desk.destination, desk.destination),
                 QStringList({ u"left to"_s, u"right to"_s }));
        QCOMPARE(listedWith(desk.destination, desk.source), QStringList { u"left to"_s });
        QCOMPARE(listedWith(desk.source, desk.trash), QStringList());
    }

    void cancellingEndsTheUnpacking()
    {
        for (const QString &end : { u"cancelled"_s, u"cancelled at once"_s, u"quitting"_s }) {
            ArchiveDesk desk;
            desk.folder.shell(u"cd from; truncate -s 100M big; "
                              "echo big | cpio -o --quiet -H newc | gzip -1 > a.cpgz"_s);
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
            QVERIFY2(desk.folder.names(u"to"_s).isEmpty(), qPrintable(end));
            QVERIFY(!desk.archiveSheet.visible);
            QCOMPARE(desk.listed, QStringList { u"right to"_s });
        }
    }
};

QTEST_MAIN(tst_Archives)
#include "tst_Archives.moc"
