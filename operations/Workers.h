#pragma once

#include "model/OperationRecord.h"

#include <QList>
#include <QObject>

#include <functional>

class OpenDialogs;

// The threads of the file operations, one per request. A worker's last act is handing its record
// over to the main thread, once, after its last file step. Main thread.
class Workers final : public QObject {
    Q_OBJECT

public:
    explicit Workers(OpenDialogs &openDialogs);
    ~Workers() override; // drains

    // Told of each worker that begins, and given the record of each that has ended, as long as no
    // question is open.
    struct Handlers {
        std::function<void(Operation)> threadBegins;
        std::function<void(const OperationRecord &)> threadWillExit;
    };
    void setHandlers(Handlers handlers);

    // Runs the body on a thread of its own.
    void detach(Operation operation, std::function<void(OperationRecord &)> body);
    // Runs the body on a thread of its own and returns when it has ended. The window goes on
    // painting but takes no input meanwhile.
    void runAndWait(const std::function<void()> &body);

    bool anyRunning() const { return _running > 0; }
    // Waits until every worker has ended and goes on serving them.
    void drain();
    void abandon() { _abandoned = true; } // ends the drain under way

private:
    void settleEnded();

    OpenDialogs &openDialogs;
    Handlers _handlers;
    QList<OperationRecord> _ended; // waiting for the open question to be answered
    int _running = 0;
    bool _abandoned = false;
};
