#include "model/Launching.h"

#include "files/Waiting.h"
#include "platform/Alerts.h"
#include "platform/Workspace.h"

Launching::Launching(Workspace &workspaceInUse, Alerts &alertsInUse, Waiting &asker)
    : workspace(workspaceInUse)
    , alerts(alertsInUse)
    , waiting(asker)
{
}

bool Launching::answer(const QString &path, const std::function<bool(Workspace &)> &launch)
{
    // By pointer: the desktop outlives every question.
    return waiting.forAnswer(path, [launch, desktop = &workspace] { return launch(*desktop); })
        .value_or(false);
}

void Launching::launchApp(const QString &path)
{
    if (!answer(path, [path](Workspace &desktop) { return desktop.launchApplication(path); }))
        alerts.ask(Alert::error(localized("Cannot launch application!"), localized("Ok")));
}

void Launching::launchInstallerPackage(const QString &path)
{
    if (!answer(path, [path](Workspace &desktop) { return desktop.openInstallerPackage(path); }))
        alerts.ask(Alert::error(localized("Cannot launch installer or package!"), localized("Ok")));
}

void Launching::openFiles(const QStringList &paths, const QString &application)
{
    for (const QString &path : paths) {
        if (!answer(path, [path, application](Workspace &desktop) {
                return desktop.openFile(path, application);
            }))
            alerts.ask(
                Alert::error(localized("Application cannot open given file!"), localized("Ok")));
    }
}

void Launching::launchFileURLs(const QStringList &paths)
{
    openFiles(paths, {});
}

void Launching::launchTool(Tool tool)
{
    launchFileURLs({ workspace.applicationForTool(tool) });
}

void Launching::openAddress(const QString &address)
{
    if (!workspace.openAddress(address))
        alerts.ask(Alert::error(localized("Cannot launch application!"), localized("Ok")));
}
