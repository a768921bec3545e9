#include "operations/SetAside.h"

#include "tests/support/RecordedWorkspace.h"
#include "tests/support/TestTree.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct Shelf {
    TestFolder folder;
    RecordedWorkspace workspace;
    Journal journal { folder.path(u"journal"_s) };
    QString target = folder.path(u"a"_s);

    Shelf() { makeTree(folder, u"a=old, no folder="_s); }
};

} // namespace

class tst_SetAside : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aLivingOwnerIsLeftAlone();
    void withoutAJournalNothingIsTouched();
    void whatTheTrashRefusesIsKeptBeside();
};

void tst_SetAside::aLivingOwnerIsLeftAlone()
{
    Shelf shelf;
    auto open = SetAside::take(shelf.target, SetAside::Work::CopyFile, shelf.journal);
    SetAside::replay(shelf.journal, shelf.workspace);
    QVERIFY(!exists(shelf.target));
    QCOMPARE(open->settleFailure(shelf.workspace), Settled::CameBack);
    QCOMPARE(shelf.folder.read(u"a"_s), "old");
}

void tst_SetAside::withoutAJournalNothingIsTouched()
{
    Shelf shelf;
    QTest::ignoreMessage(QtWarningMsg, "The journal cannot be written; nothing was replaced.");
    QVERIFY(!SetAside::take(shelf.target, SetAside::Work::Move,
                            Journal(shelf.folder.path(u"no folder"_s))));
    QCOMPARE(shelf.folder.read(u"a"_s), "old");
}

void tst_SetAside::whatTheTrashRefusesIsKeptBeside()
{
    Shelf shelf;
    shelf.workspace.trashWorks = false;
    auto open = SetAside::take(shelf.target, SetAside::Work::Move, shelf.journal);
    makeTree(shelf.folder, u"a=left by the move"_s);
    QCOMPARE(open->settleFailure(shelf.workspace), Settled::KeptBeside);
    QCOMPARE(shelf.folder.read(u"a"_s), "left by the move");
    QCOMPARE(shelf.folder.read(u"a (1)"_s), "old");
}

QTEST_GUILESS_MAIN(tst_SetAside)
#include "tst_SetAside.moc"
