#include "operations/RunTurns.h"

#include <QTest>

#include <thread>

class tst_RunTurns : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void runsComeInTheOrderOfTheirRequests();
    void aCancelEndsWithItsRun();
    void aWaitingRunIsCancelledAtOnceAndTheActiveOneGoesOn();
};

void tst_RunTurns::runsComeInTheOrderOfTheirRequests()
{
    RunTurns turns;
    const auto first = turns.enqueue();
    const auto second = turns.enqueue();
    QList<unsigned> order;
    std::thread late([&] {
        if (turns.wait(second))
            order.append(second);
        turns.end(second);
    });
    QVERIFY(turns.wait(first));
    order.append(first);
    turns.end(first);
    late.join();
    QCOMPARE(order, QList<unsigned>({ first, second }));
}

void tst_RunTurns::aCancelEndsWithItsRun()
{
    RunTurns turns;
    turns.cancel(); // nothing runs
    QVERIFY(!turns.isCancelled());
    const auto first = turns.enqueue();
    const auto second = turns.enqueue();
    QVERIFY(turns.wait(first));
    turns.cancel();
    QVERIFY(turns.isCancelled());
    turns.end(first);
    QVERIFY(turns.wait(second));
    QVERIFY(!turns.isCancelled());
    turns.end(second);
}

void tst_RunTurns::aWaitingRunIsCancelledAtOnceAndTheActiveOneGoesOn()
{
    RunTurns turns;
    const auto active = turns.enqueue();
    QVERIFY(turns.wait(active));
    const auto waiting = turns.enqueue();
    bool granted = true;
    std::thread other([&] { granted = turns.wait(waiting); });
    turns.cancel();
    turns.cancel();
    other.join();
    QVERIFY(!granted);
    turns.end(active);
}

QTEST_GUILESS_MAIN(tst_RunTurns)
#include "tst_RunTurns.moc"
