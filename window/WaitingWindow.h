#pragma once

#include "files/Waiting.h"

#include <QObject>

class NoticeLabel;
class MainWindowLayout;

// The window while the program waits for a disk: it says what for, keeps input for afterwards in
// its order, and gives up at Escape. Input that was meant for an answer that did not come is
// dropped with it. Main thread.
class WaitingWindow final : public QObject, public WaitingDisplay {
    Q_OBJECT

public:
    WaitingWindow(MainWindowLayout &window, Waiting &waiting);
    ~WaitingWindow() override;

    void showWaiting(const QString &text) override;
    void endWaiting(const QString &unanswered) override;

    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    void keep(QObject *receiver, const QEvent &event);
    void deliver(QObject *receiver, QEvent &event);

    NoticeLabel &notice;
    Waiting &waiting;
    int _failures = 0; // waits that had no answer
    int _deliveryLevel = -1; // of the event loop in which kept input is delivered
};
