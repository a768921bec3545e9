#pragma once

#include "model/Side.h"

#include <QString>

#include <functional>

class Alerts;
class FileQueries;
class MainModel;
class PaneWindow;
class Workspace;

// The commands of the navigators' menus: each acts on the pane whose menu it was chosen from.
class FolderCommands final {
public:
    // Asks for the path of a folder, with one to begin with; "" when cancelled.
    using AskForFolder = std::function<QString(const QString &prompt, const QString &path)>;

    FolderCommands(PaneWindow &window, const MainModel &mainModel, const FileQueries &queries,
                   const Workspace &workspace, Alerts &alerts, AskForFolder ask);

    void homeFolderClicked(Side menu);
    void volumesClicked(Side menu);
    void otherFolderClicked(Side menu);
    void useOpositePath(Side menu); // the other pane's folder in this one
    void copyPathClicked(Side menu);
    void copyLocalizedPathClicked(Side menu); // as it is shown

private:
    void go(Side side, const QString &path);

    PaneWindow &window;
    const MainModel &mainModel;
    const FileQueries &queries;
    const Workspace &workspace;
    Alerts &alerts;
    const AskForFolder _askForFolder;
};
