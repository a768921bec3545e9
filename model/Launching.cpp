#include "model/Launching.h"

#include "platform/Alerts.h"
#include "platform/Workspace.h"

Launching::Launching(Workspace &workspaceInUse, Alerts &alertsInUse)
    : workspace(workspaceInUse)
    , alerts(alertsInUse)
{
}

void Launching::launchApp(const QString &path)
{
    if (!workspace.launchApplication(path))
        alerts.ask(Alert::error(localized("Cannot launch application!"), localized("Ok")));
}

void Launching::launchInstallerPackage(const QString &path)
{
    if (!workspace.openInstallerPackage(path))
        alerts.ask(Alert::error(localized("Cannot launch installer or package!"), localized("Ok")));
}

void Launching::openFiles(const QStringList &paths, const QString &application)
{
    for (const QString &path : paths) {
        if (!workspace.openFile(path, application))
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
