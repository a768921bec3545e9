#pragma once

#include <QString>

class PasswordWait;

// The system's polkit, asked about one action of this process. Where there is no bus or no polkit
// nothing is granted, and what says so is in the log. Main thread.
class Polkit final {
public:
    explicit Polkit(QString action);
    ~Polkit();
    Polkit(const Polkit &) = delete;
    Polkit &operator=(const Polkit &) = delete;

    struct Verdict {
        bool authorized = false;
        QString temporary {}; // by which id that can be revoked; "" when it is for good
    };
    // Nobody is asked. What has no answer within a few seconds is refused; what else comes to the
    // main thread meanwhile waits.
    Verdict check();
    // The person may be asked, for as long as it takes or until he gives the wait up.
    Verdict ask(PasswordWait &wait);
    // False when it stays: without a session of the desktop polkit revokes none before its time.
    bool revoke(const QString &temporary);

private:
    const QString _action;
};
