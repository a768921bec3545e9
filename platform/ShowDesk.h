#pragma once

#include <QStringList>

#include <functional>

// What another program, or another start of this one, asks the window to show. Paths are absolute.
struct ShowRequest {
    enum class What {
        Panes, // the first in the left pane, the second in the right one
        Folders, // the first in the active pane, the second in the other one
        Items, // selected in their folders: that of the first in the active pane
        Information, // about each of the items
    };

    What what;
    QStringList paths {};
    // Called once: what cannot be shown, in lines for a person; none also where it was overtaken by
    // what was asked for later.
    std::function<void(const QStringList &complaints)> settled = [](const QStringList &) {};
};

// Who shows it, when its turn has come. Main thread.
class ShowDesk {
public:
    virtual ~ShowDesk() = default;
    virtual void show(const ShowRequest &request) = 0;
};
