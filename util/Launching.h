#pragma once

#include <QStringList>

class Alerts;
class Workspace;

// Opens applications and files, with the stated alert for each that cannot be opened. Main thread.
class Launching {
public:
    Launching(Workspace &workspace, Alerts &alerts);

    void launchApp(const QString &path);
    void launchInstallerPackage(const QString &path);
    void openFiles(const QStringList &paths, const QString &application); // "": the default one
    void launchFileURLs(const QStringList &paths);

private:
    Workspace &workspace;
    Alerts &alerts;
};
