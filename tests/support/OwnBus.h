#pragma once

#include <QProcess>
#include <QTest>

// A bus of the test's own, which ends with it.
class OwnBus final {
public:
    ~OwnBus() { stop(); }

    // Its address; "" fails the test.
    QByteArray start()
    {
        _daemon.start(QStringLiteral("dbus-daemon"),
                      { QStringLiteral("--session"), QStringLiteral("--nofork"),
                        QStringLiteral("--print-address=1") });
        if (!_daemon.waitForStarted() || !_daemon.waitForReadyRead())
            QTest::qFail("dbus-daemon does not start", __FILE__, __LINE__);
        return _daemon.readLine().trimmed();
    }
    void stop()
    {
        _daemon.kill();
        _daemon.waitForFinished();
    }

private:
    QProcess _daemon;
};
