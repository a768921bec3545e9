#include "app/SessionSaving.h"

#include "app/Application.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QSessionManager>

SessionSaving::SessionSaving(Application &application)
    : _application(application)
    , _program(QCoreApplication::arguments().value(0))
{
    // One without a folder is looked for along PATH, then as now.
    if (_program.contains(u'/'))
        _program = QFileInfo(_program).absoluteFilePath();
    connect(qApp, &QGuiApplication::commitDataRequest, this, &SessionSaving::commit,
            Qt::DirectConnection);
    connect(qApp, &QGuiApplication::saveStateRequest, this, &SessionSaving::describeRestart,
            Qt::DirectConnection);
    connect(qApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState now) {
                if (now != Qt::ApplicationActive)
                    _application.noteState();
            });
}

void SessionSaving::commit(QSessionManager &manager)
{
    const bool goesOn =
        _application.commitSession([&manager] { return manager.allowsInteraction(); });
    if (goesOn)
        manager.release();
    else
        manager.cancel();
}

void SessionSaving::describeRestart(QSessionManager &manager)
{
    _application.save();
    // Without the folders of the command line: those that are shown now come from the settings.
    QStringList command = manager.restartCommand();
    if (!command.isEmpty())
        command[0] = _program;
    manager.setRestartCommand(command);
}
