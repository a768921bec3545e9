#include "operations/FileOperations.h"

#include "model/MainModel.h"
#include "tests/operations/OperationWorld.h"
#include "tests/support/PaneWindowStub.h"
#include "util/Launching.h"

#include <QRegularExpression>
#include <QTest>

namespace {

struct Desk : World {
    Desk()
    {
        model.setWindowController(&window);
        model.setTwinleaf(&operations);
        window.paths = { source, destination };
        operations.setMainModel(&model);
        operations.setWindowController(&window, &sheet);
    }
    OperationRequest operation(const QStringList &items) const
    {
        return operationRequest(Side::Left, source, destination, items, UpdateBoth::No);
    }

    MessageBus bus;
    Launching launching { workspace, alerts };
    MainModel model { bus, defaults, alerts, queries, launching, kinds };
    PaneWindowStub window;
    FileOperations operations { bus, alerts, programs, workspace, queries, dates, questions };
};

} // namespace

class tst_FileOperations : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anExistingNameMakesNoFolderAndNoThread();
    void anInvalidRequestStartsNothing();
    void duplicatingAfterNoDoesNothing();
    void panesAreNotListedAgainUnderAnOpenQuestion();
    void theEndOfTheSessionWaitsForADuplicate();
};

void tst_FileOperations::anExistingNameMakesNoFolderAndNoThread()
{
    Desk desk;
    desk.folder.write(u"from/a"_s, "x");
    desk.alerts.answer(Alert::Ok);
    desk.operations.newFolder(desk.operation({ u"a"_s }));
    QCOMPARE(desk.alerts.shown().last().text, u"Folder already exists!"_s);
    QVERIFY(!desk.operations.anyRunning());
}

void tst_FileOperations::anInvalidRequestStartsNothing()
{
    Desk desk;
    OperationRequest request = desk.operation({ u"a"_s });
    request.insert(RequestKey::Side, u"LEFT"_s);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"'Side' is not"_s));
    desk.operations.deleteItems(request);
    QVERIFY(!desk.operations.anyRunning());
}

void tst_FileOperations::duplicatingAfterNoDoesNothing()
{
    Desk desk;
    desk.folder.write(u"from/a"_s, "new");
    desk.folder.write(u"from/b"_s, "old");
    desk.alerts.answer(Alert::No);
    desk.operations.duplicateItem(desk.source + u"/a"_s, desk.source + u"/b"_s);
    QCOMPARE(desk.from(u"b"_s), "old");
    QCOMPARE(desk.window.updates, 0);
}

void tst_FileOperations::panesAreNotListedAgainUnderAnOpenQuestion()
{
    Desk desk;
    {
        const Questions::Guard open(desk.questions);
        desk.operations.newFolder(desk.operation({ u"new"_s }));
        QTRY_VERIFY(exists(desk.source + u"/new"_s));
        QCoreApplication::processEvents();
        QCOMPARE(desk.window.updates, 0);
    }
    desk.operations.drain();
    QCOMPARE(desk.window.updates, 1);
    QVERIFY(desk.model.getRowFromValueInFileList(Side::Left, desk.source + u"/new"_s) > 0);
}

void tst_FileOperations::theEndOfTheSessionWaitsForADuplicate()
{
    Desk desk;
    desk.folder.write(u"from/a"_s, "x");
    bool waited = false;
    desk.programs.before = [&](const QStringList &) -> std::optional<int> {
        QMetaObject::invokeMethod(&desk.model, [&] {
            QCoreApplication::exit(); // what ends every event loop must not end the wait
            desk.operations.drain();
            waited = exists(desk.source + u"/b"_s);
        });
        return std::nullopt;
    };
    desk.operations.duplicateItem(desk.source + u"/a"_s, desk.source + u"/b"_s);
    QTRY_VERIFY(waited);
    QCOMPARE(desk.from(u"b"_s), "x");
}

QTEST_MAIN(tst_FileOperations)
#include "tst_FileOperations.moc"
