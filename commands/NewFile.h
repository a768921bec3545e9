#pragma once

#include "model/Side.h"

#include <QString>

class FileQueries;
class MainModel;
class OperationDesk;
class PaneWindow;
struct OperationRequest;

// The command that makes an empty file in the active pane's folder, once it has a name for it.
class NewFile final {
public:
    NewFile(PaneWindow &window, const MainModel &mainModel, const FileQueries &queries,
            OperationDesk &twinleaf);

    void newFileClicked();
    // After one that failed, with the name that was typed.
    void askAgain(const OperationRequest &refused);

private:
    void ask(const QString &folder, const QString &suggested, Side side);

    PaneWindow &window;
    const MainModel &mainModel;
    const FileQueries &queries;
    OperationDesk &twinleaf;
};
