#include "tests/operations/DeskWorld.h"
#include "tests/support/Watched.h"

#include <QRegularExpression>
#include <QTest>

class tst_FileOperations : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatIsRefusedAtTheDoorStartsNothing();
    void copiesAndMovesSpinUntilTheyEnd();
    void panesAreNotListedAgainUnderAnOpenQuestion();
    void theEndOfTheSessionWaitsForADuplicate();
};

void tst_FileOperations::whatIsRefusedAtTheDoorStartsNothing()
{
    Desk desk(u"from/a=new, from/b=old"_s);
    const auto request = [&](std::optional<Side> side) {
        return OperationRequest { desk.source, desk.destination, { u"a"_s }, side, UpdateBoth::No };
    };
    desk.answer({ Alert::Ok, Alert::No });
    desk.operations.newFolder(request(Side::Left));
    QCOMPARE(desk.lastAlert().text, u"Folder already exists!"_s);
    desk.operations.duplicateItem(desk.source + u"/a"_s, desk.source + u"/b"_s);
    for (const auto verb : { &FileOperations::deleteItems, &FileOperations::copyItems,
                             &FileOperations::createAlias }) {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"count != 5"_s));
        (desk.operations.*verb)(request(std::nullopt));
    }
    QVERIFY(!desk.operations.anyRunning());
    QCOMPARE(desk.tree(), u"from/a=new, from/b=old"_s);
    QCOMPARE(desk.window.updates, 0);
    QCOMPARE(desk.window.spinners, 0);
}

// A new folder and a deletion turn no spinner on, and leave that of a copy under way.
void tst_FileOperations::copiesAndMovesSpinUntilTheyEnd()
{
    Desk desk(u"from/a=x, from/b=x, from/c=x, from/d=x"_s);
    const auto request = [&](const QString &name) {
        return OperationRequest {
            desk.source, desk.destination, { name }, Side::Left, UpdateBoth::No
        };
    };
    desk.operations.newFolder(request(u"new"_s));
    desk.operations.deleteItems(request(u"c"_s));
    QCOMPARE(desk.window.spinners, 0);
    desk.operations.copyItems(request(u"a"_s));
    desk.operations.moveItems(request(u"b"_s));
    desk.operations.createAlias(request(u"d"_s));
    QCOMPARE(desk.window.spinners, 3);
    desk.operations.drain();
    QCOMPARE(desk.window.spinners, 0);
}

void tst_FileOperations::panesAreNotListedAgainUnderAnOpenQuestion()
{
    Desk desk;
    const QString made = desk.source + u"/new"_s;
    {
        const OpenDialogs::Guard open(desk.openDialogs);
        desk.operations.newFolder(
            { desk.source, desk.destination, { u"new"_s }, Side::Left, UpdateBoth::No });
        QTRY_VERIFY(exists(made));
        QCoreApplication::processEvents();
        QCOMPARE(desk.window.updates, 0);
    }
    desk.operations.drain();
    QCOMPARE(desk.window.updates, 1);
    QVERIFY(desk.model.getRowFromValueInFileList(Side::Left, made) > 0);
}

void tst_FileOperations::theEndOfTheSessionWaitsForADuplicate()
{
    Desk desk(u"from/a=x"_s);
    bool waited = false;
    const Watched watched([&](Call call, const char *, unsigned) {
        if (call == Call::CopyRange && !waited)
            QMetaObject::invokeMethod(&desk.model, [&] {
                QCoreApplication::exit(); // what ends every event loop must not end the wait
                desk.operations.drain();
                waited = exists(desk.source + u"/b"_s);
            });
        return 0;
    });
    desk.operations.duplicateItem(desk.source + u"/a"_s, desk.source + u"/b"_s);
    QTRY_VERIFY(waited);
    QCOMPARE(desk.from(u"b"_s), "x");
}

QTEST_MAIN(tst_FileOperations)
#include "tst_FileOperations.moc"
