#pragma once

#include "files/Waiting.h"

#include <QObject>
#include <QSet>

class NoticeLabel;
class MainWindowLayout;

// The window while the program waits for a disk: it says what for, keeps input for afterwards in
// its order, and gives up at Escape. Input that was meant for an answer that did not come is
// dropped with it, unless nobody had asked for that: a listing after the end of a worker. Main
// thread.
class WaitingWindow final : public QObject, public WaitingDisplay {
    Q_OBJECT

public:
    WaitingWindow(MainWindowLayout &window, Waiting &waiting);
    ~WaitingWindow() override;

    void showWaiting(const QString &text) override;
    void endWaiting(bool answered, const QString &told) override;

    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    void keep(QObject *receiver, const QEvent &event);
    bool isMeant(const QEvent &event, int failures);
    void deliver(QObject *receiver, QEvent &event);

    NoticeLabel &notice;
    Waiting &waiting;
    int _failures = 0; // waits of the person's that had no answer
    QSet<int> _droppedPresses; // keys and buttons, whose releases go too
    int _deliveryLevel = -1; // of the event loop in which kept input is delivered
};
