#pragma once

#include "files/Descriptor.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>
#include <sys/types.h>

class QSocketNotifier;

// Runs the program that writes the index beside this one, from start() on to its own end: at the
// end of its standard input it ends, too. When it ends by itself it is started again, the later the
// oftener that happens. Main thread; waits for nothing.
class IndexerProcess final : public QObject {
    Q_OBJECT

public:
    // The program twinleaf-index that lies beside this one, else where programs lie.
    IndexerProcess();
    IndexerProcess(QByteArray program, std::chrono::milliseconds firstPause);
    ~IndexerProcess() override;

    void start(); // no effect when it runs
    pid_t process() const { return _process; } // -1: it does not run now

private:
    void launch();
    void takeEnd();
    void startLater();

    const QByteArray _program;
    bool _wanted = false;
    pid_t _process = -1;
    Descriptor _input; // it reads the other end
    Descriptor _end; // becomes readable when it has ended
    std::unique_ptr<QSocketNotifier> _ended;
    QElapsedTimer _running;
    QTimer _again;
    const std::chrono::milliseconds _firstPause; // before it is started again
    std::chrono::milliseconds _pause;
};
