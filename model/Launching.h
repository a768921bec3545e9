#pragma once

#include <QStringList>

#include <functional>

class Alerts;
class Waiting;
class Workspace;
enum class Tool;

// Opens applications and files, with the stated alert for each that cannot be opened. The desktop
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
    // A web or mail address, in the person's browser or mail program.
    void openAddress(const QString &address);

private:
    // What the desktop answers; false when that was given up.
    bool answer(const QString &path, const std::function<bool(Workspace &)> &launch);

    Workspace &workspace;
    Alerts &alerts;
    Waiting &waiting;
};
