#pragma once

#include "platform/desktop/ApplicationService.h"
#include "platform/desktop/FileManagerService.h"
#include "platform/desktop/SingleInstance.h"
#include "platform/ShowDesk.h"

#include <QPointer>
#include <QWidget>

// What this program is to the others of its session: the one process of its name, which shows what
// they ask for. Without a bus it works alone. Main thread.
class SessionServices final : public ShowDesk {
public:
    SessionServices();
    ~SessionServices() override;
    SessionServices(const SessionServices &) = delete;
    SessionServices &operator=(const SessionServices &) = delete;

    // Before there is a window; see SingleInstance::claim(). The first is spoken to from now on.
    SingleInstance::Verdict begin(const QStringList &folders, const QByteArray &token);
    // Who shows what was asked for; before the event loop.
    void serve(ShowDesk &desk, QWidget &window);
    // The program is about to end: a start from now on is one of its own.
    void end();

    void show(const ShowRequest &request) override;

private:
    bool bringForward(const QByteArray &token);

    QDBusConnection _bus;
    SingleInstance _instance;
    ApplicationService _application;
    FileManagerService _fileManager;
    ShowDesk *_desk = nullptr; // while there is a window
    QPointer<QWidget> _window;
};
