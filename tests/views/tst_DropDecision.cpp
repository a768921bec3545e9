#include "views/DropDecision.h"

#include <QtTest>

class tst_DropDecision : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void heldKeysDecide_data();
    void heldKeysDecide();
};

void tst_DropDecision::heldKeysDecide_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("held");
    QTest::addColumn<int>("offered");
    QTest::addColumn<int>("shown");
    using namespace DragOperation;
    const Qt::KeyboardModifiers none, alt = Qt::AltModifier, ctrl = Qt::ControlModifier;
    QTest::newRow("nothing") << none << Move << Move;
    QTest::newRow("Option copies") << alt << Copy << Copy;
    QTest::newRow("Command alone moves") << ctrl << Move << Move;
    QTest::newRow("both: offered and shown differ") << (ctrl | alt) << Generic << Link;
    QTest::newRow("one key more moves") << (alt | Qt::ShiftModifier) << Move << Move;
    QTest::newRow("keypad does not count") << (alt | Qt::KeypadModifier) << Copy << Copy;
}

void tst_DropDecision::heldKeysDecide()
{
    QFETCH(Qt::KeyboardModifiers, held);
    QTEST(DropDecision::draggingSourceOperationMask(held), "offered");
    QTEST(DropDecision::draggingUpdated(held), "shown");
}

QTEST_GUILESS_MAIN(tst_DropDecision)
#include "tst_DropDecision.moc"
