#include "operations/SetAside.h"

#include "platform/FileStatus.h"
#include "tests/support/RecordedWorkspace.h"
#include "tests/support/TestFolder.h"
#include "util/PathText.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_SetAside : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aCrashIsSettledAtTheNextStart_data();
    void aCrashIsSettledAtTheNextStart();
    void aLivingOwnerIsLeftAlone();
    void withoutAJournalNothingIsTouched();
    void whatTheTrashRefusesIsKeptBeside();
};

void tst_SetAside::aCrashIsSettledAtTheNextStart_data()
{
    QTest::addColumn<bool>("replacementStands");
    QTest::newRow("killed before the copy made anything") << false;
    QTest::newRow("killed while something stood at the name") << true;
}

void tst_SetAside::aCrashIsSettledAtTheNextStart()
{
    QFETCH(bool, replacementStands);
    TestFolder folder;
    folder.makeFolder(u"trash"_s);
    RecordedWorkspace workspace;
    workspace.trashFolder = folder.path() + u"/trash"_s;
    const Journal journal(folder.path() + u"/journal"_s);
    folder.write(u"a"_s, "old");
    {
        // Neither discarded nor settled: as when the process is killed here.
        const auto open =
            SetAside::take(folder.path() + u"/a"_s, SetAside::Work::CopyFile, journal);
        QVERIFY(open);
        QVERIFY(!exists(folder.path() + u"/a"_s));
    }
    if (replacementStands)
        folder.write(u"a"_s, "perhaps half");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"interrupted replacement"_s));
    SetAside::replay(journal, workspace);
    QCOMPARE(folder.read(u"a"_s), replacementStands ? "perhaps half" : "old");
    QCOMPARE(exists(folder.path() + u"/trash/a"_s), replacementStands);
    QVERIFY(journal.abandoned().isEmpty());
}

void tst_SetAside::aLivingOwnerIsLeftAlone()
{
    TestFolder folder;
    RecordedWorkspace workspace;
    const Journal journal(folder.path() + u"/journal"_s);
    folder.write(u"a"_s, "old");
    auto open = SetAside::take(folder.path() + u"/a"_s, SetAside::Work::CopyFile, journal);
    SetAside::replay(journal, workspace);
    QVERIFY(!exists(folder.path() + u"/a"_s));
    QCOMPARE(open->settleFailure(workspace), Settled::CameBack);
    QCOMPARE(folder.read(u"a"_s), "old");
}

void tst_SetAside::withoutAJournalNothingIsTouched()
{
    TestFolder folder;
    folder.write(u"a"_s, "old");
    folder.write(u"no folder"_s, "");
    QTest::ignoreMessage(QtWarningMsg, "The journal cannot be written; nothing was replaced.");
    QVERIFY(!SetAside::take(folder.path() + u"/a"_s, SetAside::Work::Move,
                            Journal(folder.path() + u"/no folder"_s)));
    QCOMPARE(folder.read(u"a"_s), "old");
}

void tst_SetAside::whatTheTrashRefusesIsKeptBeside()
{
    TestFolder folder;
    RecordedWorkspace workspace;
    workspace.trashWorks = false;
    const Journal journal(folder.path() + u"/journal"_s);
    folder.write(u"a"_s, "old");
    auto open = SetAside::take(folder.path() + u"/a"_s, SetAside::Work::Move, journal);
    folder.write(u"a"_s, "left by the move");
    QCOMPARE(open->settleFailure(workspace), Settled::KeptBeside);
    QCOMPARE(folder.read(u"a"_s), "left by the move");
    QCOMPARE(folder.read(u"a (1)"_s), "old");
}

QTEST_GUILESS_MAIN(tst_SetAside)
#include "tst_SetAside.moc"
