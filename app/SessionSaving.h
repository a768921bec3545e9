#pragma once

#include <QObject>
#include <QString>

class Application;
class QSessionManager;

// The program's part in a session that is saved and comes back: it writes down where it stands when
// the session manager asks for it, and how it is to be started again (X11). A Wayland desktop asks
// nobody and is gone all at once, so the settings are also written each time the person turns to
// something else. Main thread.
class SessionSaving final : public QObject {
    Q_OBJECT

public:
    explicit SessionSaving(Application &application);

private:
    void commit(QSessionManager &manager);
    void describeRestart(QSessionManager &manager);

    Application &_application;
    QString _program; // as it was started, from whichever folder
};
