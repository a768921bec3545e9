#pragma once

#include "model/OperationRecord.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QStringList>

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

    // Runs the body on a thread of its own. `places`: the folders in which it works.
    void detach(Operation operation, const QStringList &places,
                std::function<void(OperationRecord &)> body);

    bool anyRunning() const { return !_running.isEmpty(); }
    QStringList places() const; // of those that run, each once
    // Waits until every worker has ended and goes on serving them.
    void drain();
    void abandon() { _abandoned = true; } // ends the drain under way

private:
    void settleEnded();

    OpenDialogs &openDialogs;
    Handlers _handlers;
    struct Ended {
        quint64 worker;
        OperationRecord record;
    };
    QList<Ended> _ended; // waiting for the open question to be answered
    QHash<quint64, QStringList> _running; // the places of each, by its number
    quint64 _lastWorker = 0;
    bool _abandoned = false;
};
