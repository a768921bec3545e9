#include "model/Launching.h"

#include "files/FileName.h"
#include "files/PathText.h"
#include "files/Waiting.h"
#include "platform/Alerts.h"
#include "platform/Workspace.h"

#include <cerrno>
#include <system_error>

namespace {

// Starting it is the answer that has to be chosen: Return alone does not.
Alert startQuestion(const QString &path)
{
    return { .style = Alert::Style::Informational,
             .title = localized("Twinleaf - Warning"),
             .text =
                 filled(localized("Start '%@'?"), FileName::shown(PathText::lastComponent(path))),
             .details = localized("It was not installed on this computer, and could do everything "
                                  "that you can.")
                 + u'\n' + FileName::shown(path),
             .buttons = { { Alert::No, localized("No") }, { Alert::Yes, localized("Yes") } },
             .cancel = Alert::No };
}

QString whyNotOpened(const QString &path, bool byDefault) // any thread
{
    const auto status = fileStatus(path, Links::Follow);
    if (!status)
        return QString::fromStdString(std::generic_category().message(errno));
    if (status->kind == FileKind::Directory)
        return localized("The folder holds no program that can be started here. 'Show package "
                         "contents' shows what is in it.");
    return byDefault ? localized("No installed program is set up to open it.") : QString();
}

} // namespace

Launching::Launching(Workspace &workspaceInUse, Alerts &alertsInUse, Waiting &asker)
    : workspace(workspaceInUse)
    , alerts(alertsInUse)
    , waiting(asker)
{
}

bool Launching::mayStart(const QString &path)
{
    struct Foreign {
        QString program;
        std::optional<FileStatus> status;
    };
    // By pointer: the desktop outlives every question.
    const auto foreign = waiting.forAnswer(path, [path, desktop = &workspace] {
        const QString program = desktop->foreignProgram(path);
        return Foreign { program, fileStatus(program, Links::Follow) };
    });
    if (!foreign)
        return false;
    if (foreign->program.isEmpty())
        return true;
    const auto agreed = _agreed.constFind(foreign->program);
    if (agreed != _agreed.cend() && foreign->status && isUnchanged(*agreed, *foreign->status))
        return true;
    if (alerts.ask(startQuestion(path)) != Alert::Yes)
        return false;
    if (foreign->status)
        _agreed.insert(foreign->program, *foreign->status);
    return true;
}

void Launching::launch(const QString &path, const char *failure, bool byDefault,
                       const std::function<bool(Workspace &)> &work)
{
    if (byDefault && !mayStart(path))
        return;
    const auto why = waiting.forAnswer(path, [=, desktop = &workspace] {
        return work(*desktop) ? std::nullopt : std::optional(whyNotOpened(path, byDefault));
    });
    if (why && !*why)
        return;
    QStringList lines { FileName::shown(path) };
    if (why)
        lines.append(**why);
    lines.removeAll(QString());
    alerts.ask(Alert::failure(localized(failure), lines.join(u'\n'), localized("Ok")));
}

void Launching::launchApp(const QString &path)
{
    launch(path, QT_TRANSLATE_NOOP("Twinleaf", "Cannot launch application!"), true,
           [path](Workspace &desktop) { return desktop.launchApplication(path); });
}

void Launching::launchInstallerPackage(const QString &path)
{
    launch(path, QT_TRANSLATE_NOOP("Twinleaf", "Cannot launch installer or package!"), true,
           [path](Workspace &desktop) { return desktop.openInstallerPackage(path); });
}

void Launching::openFiles(const QStringList &paths, const QString &application)
{
    // An application that was chosen by name was asked for by that.
    for (const QString &path : paths)
        launch(path, QT_TRANSLATE_NOOP("Twinleaf", "Application cannot open given file!"),
               application.isEmpty(), [path, application](Workspace &desktop) {
                   return desktop.openFile(path, application);
               });
}

void Launching::launchFileURLs(const QStringList &paths)
{
    openFiles(paths, {});
}

void Launching::launchTool(Tool tool)
{
    launchFileURLs({ workspace.applicationForTool(tool) });
}

void Launching::openTerminal(const QString &folder)
{
    struct Started {
        bool started = false;
        QString reason {};
    };
    const auto opened = waiting.forAnswer(folder, [folder, desktop = &workspace] {
        Started now;
        now.started = desktop->openTerminal(folder, &now.reason);
        return now;
    });
    if (opened && opened->started)
        return;
    QStringList lines { FileName::shown(folder), opened ? opened->reason : QString() };
    lines.removeAll(QString());
    alerts.ask(Alert::failure(localized("Cannot open a terminal in this folder!"),
                              lines.join(u'\n'), localized("Ok")));
}

void Launching::openAddress(const QString &address)
{
    if (!workspace.openAddress(address))
        alerts.ask(Alert::failure(localized("Cannot launch application!"),
                                  address + u'\n'
                                      + localized("No installed program is set up to open it."),
                                  localized("Ok")));
}
