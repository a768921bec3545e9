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
    void plainNamesGoThroughTheShell();
    void theArchiveAlwaysEndsInZip();
    void namesAreDataToShellAndZip_data();
    void namesAreDataToShellAndZip();
    void moreNamesThanOneRunTakes_data();
    void moreNamesThanOneRunTakes();
    void whatIsThereSurvivesAFailure_data();
    void whatIsThereSurvivesAFailure();
    void anOldArchiveIsNeitherAddedToNorPacked();
    void theEndOfUnpackingIsToldOnceOrNever_data();
    void theEndOfUnpackingIsToldOnceOrNever();
    void onlyPanesThatShowTheFolderAreListedAgain();
    void cancellingEndsTheUnpacking_data();
    void cancellingEndsTheUnpacking();
};

void tst_Archives::plainNamesGoThroughTheShell()
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

void tst_Archives::theArchiveAlwaysEndsInZip()
{
    QCOMPARE(archiveFileName(u"backup"_s), u"backup.zip"_s);
    QCOMPARE(archiveFileName(u"backup.zip"_s), u"backup.zip"_s);
    QCOMPARE(archiveFileName(u"backup.ZIP"_s), u"backup.ZIP.zip"_s);
    QCOMPARE(archiveFileName(u".zip"_s), u".zip.zip"_s);
}

void tst_Archives::namesAreDataToShellAndZip_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name :
         { u"-m"_s, u"-"_s, u"--"_s, u"@"_s, u"-@"_s, u"$(touch ran)"_s, u"`touch ran`"_s,
           u"\"; touch ran; \""_s, u"a\nb"_s, u"'"_s, u"*"_s, u"[a]"_s, u"~"_s, u"&"_s, u"!x"_s,
           u"\u00FC"_s, QString(u'x' + QString(QChar(0xDCFF))) })
        QTest::newRow(FileName::toBytes(FileName::shown(name)).constData()) << name;
}

void tst_Archives::namesAreDataToShellAndZip()
{
    QFETCH(QString, name);
    ArchiveDesk desk(u"from/tree/empty/, from/tree/deep=deep, out/"_s);
    desk.folder.write(u"from/"_s + name, "content");
    desk.pack({ name, u"tree"_s }, name + u".zip"_s);
    QCOMPARE(desk.folder.names(u"from"_s).size(), 2);
    QCOMPARE(desk.from(name), "content");
    QCOMPARE(desk.folder.names(u"to"_s), QStringList { name + u".zip"_s });

    desk.unpack(u"to/"_s + name + u".zip"_s, u"out"_s);
    QCOMPARE(desk.folder.read(u"out/"_s + name), "content");
    QCOMPARE(treeOf(desk.folder, { u"out/tree"_s }), u"out/tree/deep=deep, out/tree/empty/"_s);
    QCOMPARE(desk.folder.names(u"out"_s).size(), 2);
}

void tst_Archives::moreNamesThanOneRunTakes_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("shells");
    QTest::addColumn<int>("runs");
    QTest::newRow("one line") << 500 << 1 << 0;
    QTest::newRow("too long a line") << 600 << 0 << 1;
    QTest::newRow("too long for one run") << 4600 << 0 << 2;
}

void tst_Archives::moreNamesThanOneRunTakes()
{
    QFETCH(int, count);
    ArchiveDesk desk;
    QStringList names;
    for (int number = 0; number < count; ++number) {
        names.append(QString::number(number).rightJustified(240, u'x'));
        if (number % 50 == 0) // zip passes over the others
            desk.folder.write(u"from/"_s + names.last());
    }
    desk.pack(names, u"many"_s);
    QTEST(int(desk.programs.commandLines.size()), "shells");
    QTEST(int(desk.programs.runs.size()), "runs");
    QCOMPARE(desk.members(u"many.zip"_s).size(), count / 50);
}

void tst_Archives::whatIsThereSurvivesAFailure_data()
{
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("archive");
    QTest::addColumn<int>("code");
    QTest::newRow("nothing to pack") << u"gone"_s << u"old"_s << 12;
    QTest::newRow("over a folder") << u"x"_s << u"folder"_s << 15;
    QTest::newRow("over a locked archive") << u"x"_s << u"locked"_s << 15;
    QTest::newRow("a name with a slash") << u"x"_s << u"folder.zip/x"_s << 15;
}

void tst_Archives::whatIsThereSurvivesAFailure()
{
    QFETCH(QString, item);
    QFETCH(QString, archive);
    QFETCH(int, code);
    ArchiveDesk desk(u"from/x=x, to/folder.zip/, to/locked.zip=!old, to/old.zip=old"_s);
    const QString before = desk.tree();
    desk.answer({ Alert::Ok });
    desk.pack({ item }, archive);
    const Alert alert = desk.lastAlert();
    QCOMPARE(alert.text, u"Archiving failed! Result code: %1"_s.arg(code << 8));
    QCOMPARE(alert.title, u"Twinleaf - Error"_s);
    QVERIFY(alert.style == Alert::Style::Informational);
    QCOMPARE(desk.tree(), before);
    QCOMPARE(desk.listed, QStringList { u"right to"_s });
}

void tst_Archives::anOldArchiveIsNeitherAddedToNorPacked()
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

void tst_Archives::theEndOfUnpackingIsToldOnceOrNever_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("zip"); // by its extension
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("told");
    const QString failed = u"Unpacking failed!"_s;
    QTest::newRow("done") << u"x.zip"_s << true << 0 << QString();
    QTest::newRow("cancelled") << u"x.ZIP"_s << false << 15 << QString();
    QTest::newRow("cancelled at once") << u"x.cpgz"_s << false << 128 + SIGTERM << QString();
    QTest::newRow("failed") << u"x.tar"_s << false << 1 << failed;
    QTest::newRow("crashed") << u"x.zip"_s << true << 128 + SIGSEGV << failed;
}

void tst_Archives::theEndOfUnpackingIsToldOnceOrNever()
{
    QFETCH(QString, name);
    QFETCH(bool, zip);
    QFETCH(int, status);
    QFETCH(QString, told);
    ArchiveDesk desk;
    desk.programs.before = [status](const QStringList &) { return status; };
    if (!told.isEmpty())
        desk.answer({ Alert::Ok });
    desk.unpack(u"from/"_s + name, u"to"_s);
    QStringList expected { u"/usr/bin/ditto"_s, u"-x"_s };
    if (zip)
        expected.append(u"-k"_s);
    expected << PathText::joined(desk.source, name) << desk.destination;
    QCOMPARE(desk.programs.runs, QList<QStringList> { expected });
    QCOMPARE(desk.archiveSheet.titles, QStringList { u"Unpacking '%1'..."_s.arg(name) });
    QCOMPARE(desk.lastAlert().text, told);
    QVERIFY(!desk.archiveSheet.visible);
    QCOMPARE(desk.listed, QStringList { u"right to"_s });
}

void tst_Archives::onlyPanesThatShowTheFolderAreListedAgain()
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

void tst_Archives::cancellingEndsTheUnpacking_data()
{
    QTest::addColumn<bool>("early"); // before the program runs
    QTest::addColumn<bool>("quits");
    QTest::newRow("the sheet's cancel") << false << false;
    QTest::newRow("at once") << true << false;
    QTest::newRow("quitting") << false << true;
}

void tst_Archives::cancellingEndsTheUnpacking()
{
    QFETCH(bool, early);
    QFETCH(bool, quits);
    ArchiveDesk desk;
    desk.folder.shell(u"cd from; truncate -s 100M big; "
                      "echo big | cpio -o --quiet -H newc | gzip -1 > a.cpgz"_s);
    desk.operations.unpackArchive(PathText::joined(desk.source, u"a.cpgz"_s), desk.destination);
    QVERIFY(desk.operations.anyRunning());
    if (!early)
        QTRY_VERIFY(!desk.folder.names(u"to"_s).isEmpty());
    if (quits)
        desk.operations.stopAll();
    else
        desk.bus.post(CancelArchiving, {});
    desk.operations.drain();
    QCOMPARE(desk.folder.names(u"to"_s), QStringList());
    QVERIFY(!desk.archiveSheet.visible);
    QCOMPARE(desk.listed, QStringList { u"right to"_s });
}

QTEST_MAIN(tst_Archives)
#include "tst_Archives.moc"
