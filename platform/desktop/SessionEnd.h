#pragma once

#include <QObject>

#include <optional>

class QDBusPendingCallWatcher;

// Notices that the machine, the session or this program is about to end, by whichever way it is
// told first: the login service, the session manager, SIGTERM, SIGHUP or SIGINT. The machine waits
// until the receivers of the signal are done.
class SessionEnd final : public QObject {
    Q_OBJECT

public:
    explicit SessionEnd(QObject *parent = nullptr);
    ~SessionEnd() override;

Q_SIGNALS:
    // With each notice, for one end perhaps several times: whether the end that was announced came
    // is told for a shutdown only, so the next notice may be of another one.
    void willEnd();

private Q_SLOTS:
    void prepareForShutdown(bool begins);

private:
    void watchSignals();
    void watchLogin();
    void delayShutdown();
    void letShutdownGoOn();
    void readSignal();
    bool eventFilter(QObject *watched, QEvent *event) override;
    void end();

    int _signals = -1; // readable when a signal has come
    int _inhibitor = -1; // the login service waits while this is open
};
