#include "operations/Archives.h"

#include "model/MainModel.h"
#include "operations/FileOperations.h"
#include "tests/operations/OperationWorld.h"
#include "tests/support/ArchiveSheetStub.h"
#include "tests/support/PaneWindowStub.h"
#include "util/Launching.h"

#include <QTest>

#include <csignal>

namespace {

// The operations between two panes, and what was listed again.
struct Desk : World {
    Desk()
    {
        model.setWindowController(&window);
        model.setTwinleaf(&operations);
        window.paths = { source, destination };
        operations.setMainModel(&model);
        operations.setWindowController(&window, &sheet);
        operations.setArchiveSheet(&archiveSheet);
        bus.subscribe(DirectoryChanged, this, &Desk::note);
    }
    ~Desk() { bus.unsubscribe(this); }
    void note(Side side, const FolderChange &change)
    {
        listed.append((side == Side::Left ? u"left "_s : u"right "_s)
                      + PathText::lastComponent(change.path));
    }

    void pack(const QStringList &names, const QString &archive)
    {
        QStringList paths;
        for (const QString &name : names)
            paths.append(PathText::joined(source, name));
        operations.archiveItems(paths, destination, archive);
        operations.drain();
    }
    void unpack(const QString &name)
    {
        operations.unpackArchive(PathText::joined(source, name), destination);
        operations.drain();
    }
    // What an archive in the destination holds, read by another program.
    QStringList members(const QString &archive)
    {
        programs.runShell(
            u"cd '%1' && rm -rf seen && mkdir seen && bsdtar -xf 'to/%2' -C seen"_s.arg(
                folder.path(), archive));
        return folder.names(u"seen"_s);
    }

    MessageBus bus;
    Launching launching { workspace, alerts };
    MainModel model { bus, defaults, alerts, queries, launching, kinds };
    PaneWindowStub window;
    ArchiveSheetStub archiveSheet;
    FileOperations operations { bus, alerts, programs, workspace, queries, dates, questions };
    QStringList listed;
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
    void theArchiveAlwaysEndsInZip_data();
    void theArchiveAlwaysEndsInZip();
    void namesAreDataToShellAndZip_data();
    void namesAreDataToShellAndZip();
    void moreNamesThanOneRunTakes_data();
    void moreNamesThanOneRunTakes();
    void anOldArchiveIsReplacedNotAddedTo();
    void anOldArchiveSurvivesAFailure();
    void anOldArchiveIsNotPackedIntoTheNewOne();
    void whatCannotBeWrittenOverStays_data();
    void whatCannotBeWrittenOverStays();
    void theExtensionDecidesWhatIsUnpacked_data();
    void theExtensionDecidesWhatIsUnpacked();
    void theEndOfUnpackingIsToldOnceOrNever_data();
    void theEndOfUnpackingIsToldOnceOrNever();
    void onlyPanesThatShowTheFolderAreListedAgain_data();
    void onlyPanesThatShowTheFolderAreListedAgain();
    void packedIsUnpacked();
    void cancellingEndsTheUnpacking_data();
    void cancellingEndsTheUnpacking();
};

void tst_Archives::plainNamesGoThroughTheShell()
{
    Desk desk;
    desk.folder.write(u"from/a b"_s, "1");
    desk.folder.write(u"from/c"_s, "2");
    desk.pack({ u"a b"_s, u"c"_s }, u"pack"_s);
    QCOMPARE(desk.programs.commandLines,
             QStringList { u"cd \"%1\" && /usr/bin/zip -r \"%2/pack.zip\" \"a b\" \"c\" "_s.arg(
                 desk.source, desk.destination) });
    QCOMPARE(desk.members(u"pack.zip"_s), QStringList({ u"a b"_s, u"c"_s }));
    QCOMPARE(desk.archiveSheet.titles, QStringList { u"Archiving to pack..."_s });
    QVERIFY(!desk.archiveSheet.visible);
}

void tst_Archives::theArchiveAlwaysEndsInZip_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file");
    QTest::newRow("none") << u"backup"_s << u"backup.zip"_s;
    QTest::newRow("given") << u"backup.zip"_s << u"backup.zip"_s;
    QTest::newRow("capitals") << u"backup.ZIP"_s << u"backup.ZIP.zip"_s;
    QTest::newRow("only an extension") << u".zip"_s << u".zip.zip"_s;
}

void tst_Archives::theArchiveAlwaysEndsInZip()
{
    QFETCH(QString, name);
    QTEST(archiveFileName(name), "file");
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
    Desk desk;
    desk.folder.write(u"from/"_s + name, "content");
    desk.folder.write(u"from/other"_s, "other");
    desk.pack({ name, u"other"_s }, name + u".zip"_s);
    QCOMPARE(desk.folder.names(u"from"_s).size(), 2);
    QCOMPARE(desk.from(name), "content");
    QCOMPARE(desk.folder.names(u"to"_s), QStringList { name + u".zip"_s });

    const QString archive = PathText::joined(desk.destination, name + u".zip"_s);
    desk.folder.makeFolder(u"out"_s);
    desk.operations.unpackArchive(archive, desk.folder.path(u"out"_s));
    desk.operations.drain();
    QCOMPARE(desk.folder.read(u"out/"_s + name), "content");
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
    Desk desk;
    QStringList names;
    for (int number = 0; number < count; ++number) {
        names.append(QString::number(number).rightJustified(240, u'x'));
        desk.folder.write(u"from/"_s + names.last());
    }
    desk.pack(names, u"many"_s);
    QTEST(int(desk.programs.commandLines.size()), "shells");
    QTEST(int(desk.programs.runs.size()), "runs");
    QCOMPARE(desk.members(u"many.zip"_s).size(), count);
}

void tst_Archives::anOldArchiveIsReplacedNotAddedTo()
{
    Desk desk;
    desk.folder.write(u"from/old"_s, "old");
    desk.folder.write(u"from/new"_s, "new");
    desk.pack({ u"old"_s }, u"a"_s);
    desk.pack({ u"new"_s }, u"a"_s);
    QCOMPARE(desk.members(u"a.zip"_s), QStringList { u"new"_s });
    QCOMPARE(desk.folder.names(u"to"_s), QStringList { u"a.zip"_s });
}

void tst_Archives::anOldArchiveSurvivesAFailure()
{
    Desk desk;
    desk.folder.write(u"to/a.zip"_s, "old");
    desk.alerts.answer(Alert::Ok);
    desk.pack({ u"gone"_s }, u"a"_s);
    const Alert alert = desk.alerts.shown().last();
    QCOMPARE(alert.text, u"Archiving failed! Result code: %1"_s.arg(12 << 8));
    QCOMPARE(alert.title, u"Twinleaf - Error"_s);
    QVERIFY(alert.style == Alert::Style::Informational);
    QCOMPARE(desk.to(u"a.zip"_s), "old");
    QCOMPARE(desk.folder.names(u"to"_s), QStringList { u"a.zip"_s });
    QCOMPARE(desk.listed, QStringList { u"right to"_s });
}

void tst_Archives::anOldArchiveIsNotPackedIntoTheNewOne()
{
    Desk desk;
    desk.folder.write(u"to/a.zip"_s, "old");
    desk.folder.write(u"to/b"_s, "b");
    desk.operations.archiveItems({ desk.destination }, desk.destination, u"a.zip"_s);
    desk.operations.drain();
    desk.members(u"a.zip"_s);
    QCOMPARE(desk.folder.names(u"seen/to"_s), QStringList { u"b"_s });
    QVERIFY(desk.inTrash(u"a.zip"_s));
}

void tst_Archives::whatCannotBeWrittenOverStays_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a folder") << u"folder"_s;
    QTest::newRow("a locked archive") << u"locked"_s;
    QTest::newRow("a name with a slash") << u"folder.zip/x"_s;
}

void tst_Archives::whatCannotBeWrittenOverStays()
{
    QFETCH(QString, name);
    Desk desk;
    desk.folder.makeFolder(u"to/folder.zip"_s);
    desk.folder.write(u"to/locked.zip"_s, "old");
    desk.folder.setAttribute(u"to/locked.zip"_s, "user.twinleaf.locked", "1");
    desk.folder.write(u"from/x"_s, "x");
    desk.alerts.answer(Alert::Ok);
    desk.pack({ u"x"_s }, name);
    QCOMPARE(desk.folder.names(u"to/folder.zip"_s), QStringList());
    QCOMPARE(desk.to(u"locked.zip"_s), "old");
    QCOMPARE(desk.folder.names(u"to"_s).size(), 2);
}

void tst_Archives::theExtensionDecidesWhatIsUnpacked_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("zip");
    QTest::newRow("zip") << u"x.zip"_s << true;
    QTest::newRow("capitals") << u"x.ZIP"_s << false;
    QTest::newRow("cpgz") << u"x.cpgz"_s << false;
    QTest::newRow("tar") << u"x.tar"_s << false;
}

void tst_Archives::theExtensionDecidesWhatIsUnpacked()
{
    QFETCH(QString, name);
    QFETCH(bool, zip);
    Desk desk;
    desk.programs.before = [](const QStringList &) { return 0; };
    desk.unpack(name);
    QStringList expected { u"/usr/bin/ditto"_s, u"-x"_s };
    if (zip)
        expected.append(u"-k"_s);
    expected << PathText::joined(desk.source, name) << desk.destination;
    QCOMPARE(desk.programs.runs, QList<QStringList> { expected });
    QCOMPARE(desk.archiveSheet.titles, QStringList { u"Unpacking '%1'..."_s.arg(name) });
}

void tst_Archives::theEndOfUnpackingIsToldOnceOrNever_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("told");
    QTest::newRow("done") << 0 << false;
    QTest::newRow("cancelled") << 15 << false;
    QTest::newRow("cancelled before it had begun") << 128 + SIGTERM << false;
    QTest::newRow("failed") << 1 << true;
    QTest::newRow("crashed") << 128 + SIGSEGV << true;
}

void tst_Archives::theEndOfUnpackingIsToldOnceOrNever()
{
    QFETCH(int, status);
    QFETCH(bool, told);
    Desk desk;
    desk.programs.before = [status](const QStringList &) { return status; };
    if (told)
        desk.alerts.answer(Alert::Ok);
    desk.unpack(u"x.zip"_s);
    if (told)
        QCOMPARE(desk.alerts.shown().last().text, u"Unpacking failed!"_s);
    QVERIFY(!desk.archiveSheet.visible);
    QCOMPARE(desk.listed, QStringList { u"right to"_s });
}

void tst_Archives::onlyPanesThatShowTheFolderAreListedAgain_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::addColumn<QStringList>("listed");
    QTest::newRow("both") << u"to"_s << u"to"_s << QStringList { u"left to"_s, u"right to"_s };
    QTest::newRow("left alone") << u"to"_s << u"from"_s << QStringList { u"left to"_s };
    QTest::newRow("none any more") << u"from"_s << u"trash"_s << QStringList {};
}

void tst_Archives::onlyPanesThatShowTheFolderAreListedAgain()
{
    QFETCH(QString, left);
    QFETCH(QString, right);
    Desk desk;
    desk.window.paths = { desk.folder.path(left), desk.folder.path(right) };
    desk.folder.write(u"from/x"_s, "x");
    desk.pack({ u"x"_s }, u"a"_s);
    QTEST(desk.listed, "listed");
}

void tst_Archives::packedIsUnpacked()
{
    Desk desk;
    desk.folder.makeFolder(u"from/tree/empty"_s);
    desk.folder.write(u"from/tree/deep"_s, "deep");
    desk.pack({ u"tree"_s }, u"a"_s);
    desk.operations.unpackArchive(PathText::joined(desk.destination, u"a.zip"_s), desk.trash);
    desk.operations.drain();
    QCOMPARE(desk.folder.read(u"trash/tree/deep"_s), "deep");
    QVERIFY(exists(desk.folder.path(u"trash/tree/empty"_s)));
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
    Desk desk;
    desk.programs.runShell(u"cd '%1' && truncate -s 100M big && echo big | "
                           "cpio -o --quiet -H newc | gzip -1 > a.cpgz"_s.arg(desk.source));
    const auto cancel = [&] {
        if (quits)
            desk.operations.stopAll();
        else
            desk.bus.post(CancelArchiving, {});
    };
    desk.operations.unpackArchive(PathText::joined(desk.source, u"a.cpgz"_s), desk.destination);
    QVERIFY(desk.operations.anyRunning());
    if (early)
        cancel();
    else
        QTRY_VERIFY(!desk.folder.names(u"to"_s).isEmpty());
    cancel();
    desk.operations.drain();
    QCOMPARE(desk.folder.names(u"to"_s), QStringList());
    QVERIFY(!desk.archiveSheet.visible);
    QCOMPARE(desk.listed, QStringList { u"right to"_s });
}

QTEST_MAIN(tst_Archives)
#include "tst_Archives.moc"
