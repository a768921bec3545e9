#pragma once

#include "files/FileStatus.h"

#include <QHash>
#include <QStringList>

#include <functional>

class Alerts;
class Waiting;
class Workspace;
enum class Tool;

// Opens applications and files, with one alert for each that cannot be opened. The desktop
// looks at what it opens, so it does that beside the window. Main thread.
class Launching {
public:
    Launching(Workspace &workspace, Alerts &alerts, Waiting &waiting);

    void launchApp(const QString &path);
    void launchInstallerPackage(const QString &path);
    void openFiles(const QStringList &paths, const QString &application); // "": the default one
    void launchFileURLs(const QStringList &paths);
    // The Tools menu: starts the program that does this on the desktop at hand.
    void launchTool(Tool tool);
    void openTerminal(const QString &folder); // there
    // A web or mail address, in the person's browser or mail program.
    void openAddress(const QString &address);

private:
    // Asks before a program that nobody installed is started, once in a run of ours for as long as
    // the program stays as it is. False, too, when looking at it was given up.
    bool mayStart(const QString &path);
    // Has the desktop do it, and tells when that fails. `byDefault`: with no application chosen.
    void launch(const QString &path, const char *failure, bool byDefault,
                const std::function<bool(Workspace &)> &work);

    Workspace &workspace;
    Alerts &alerts;
    Waiting &waiting;
    QHash<QString, FileStatus> _agreed; // programs that may start, as they were
};
