#include "views/DropDecision.h"

#include <QtTest>

class tst_DropDecision : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void heldKeysDecide()
    {
        using namespace DragOperation;
        const struct {
            Qt::KeyboardModifiers held;
            int offered, shown;
        } rows[] = {
            { {}, Move, Move },
            { Qt::AltModifier, Copy, Copy },
            { Qt::ControlModifier, Move, Move },
            { Qt::AltModifier | Qt::ControlModifier, Generic, Link },
            { Qt::AltModifier | Qt::ShiftModifier, Move, Move }, // one key more moves
            { Qt::AltModifier | Qt::KeypadModifier, Copy, Copy }, // does not count
        };
        for (const auto &[held, offered, shown] : rows) {
            QCOMPARE(DropDecision::draggingSourceOperationMask(held), offered);
            QCOMPARE(DropDecision::draggingUpdated(held), shown);
        }
    }
};

QTEST_GUILESS_MAIN(tst_DropDecision)
#include "tst_DropDecision.moc"
