#pragma once

#include <QObject>

#include <optional>

class QDBusPendingCallWatcher;

// Notices that the machine, the session or this program is about to end, by whichever way it is
// told first: the login service, the session manager, SIGTERM or SIGHUP. The machine waits until
// the receivers of the signal are done.
class SessionEnd final : public QObject {
    Q_OBJECT

public:
    explicit SessionEnd(QObject *parent = nullptr);
    ~SessionEnd() override;

Q_SIGNALS:
    void willEnd(); // once, unless the shutdown was called off in between

private Q_SLOTS:
    void prepareForShutdown(bool begins);

private:
    void watchSignals();
    void watchLogin();
    void delayShutdown();
    void letShutdownGoOn();
    void tell();
    void readSignal();

    int _signals = -1; // readable when a signal has come
    int _inhibitor = -1; // the login service waits while this is open
    bool _told = false;
};
