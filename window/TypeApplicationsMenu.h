#pragma once

#include "platform/Workspace.h"
#include "widgets/MenuIcons.h"

#include <QList>
#include <QObject>
#include <QPointer>

class Alerts;
class DiskQuestions;
class PaneCommands;
class PathIcons;
class QAction;
class QMenu;
class Waiting;

// The applications that open the selected files, by their type, as the first items of a submenu.
// They are asked for when a menu that holds it is about to open, and stand there when it does.
// Those that come later are added below: nothing moves under the pointer. Main thread.
class TypeApplicationsMenu final : public QObject {
    Q_OBJECT

public:
    struct Services {
        Workspace &workspace;
        DiskQuestions &questions;
        Waiting &waiting;
        Alerts &alerts;
    };
    // The submenu belongs to its menus already.
    TypeApplicationsMenu(QMenu &menu, PaneCommands &commands, PathIcons &applicationIcons,
                         const Services &services);

private:
    using Application = Workspace::FileApplications::Application;

    void ask();
    void show(const Workspace::FileApplications &found);
    void removeAll();
    QAction *newItem(const Application &application, bool isStandard, QMenu &parent) const;
    void addChoiceOfDefault(const Workspace::FileApplications &found, QAction *before);
    void setDefault(const Application &application, const QString &type, const QString &kind);

    QMenu &_menu;
    PaneCommands &commands;
    const Services _services;
    const MenuIcons _icons;
    QList<QPointer<QAction>> _items; // the menu can be cleared by others
    unsigned _lastQuestion = 0;
};
