#include "window/TypeApplicationsMenu.h"

#include "base/Arrivals.h"
#include "base/Localized.h"
#include "commands/PaneCommands.h"
#include "files/DiskQuestions.h"
#include "files/PathText.h"
#include "files/Waiting.h"
#include "platform/Alerts.h"
#include "widgets/Icons.h"
#include "widgets/MenuText.h"

#include <QMenu>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype MostShown = 10; // a person looks for further ones by name, under "Other..."

} // namespace

TypeApplicationsMenu::TypeApplicationsMenu(QMenu &menu, PaneCommands &paneCommands,
                                           PathIcons &applicationIcons, const Services &services)
    : _menu(menu)
    , commands(paneCommands)
    , _services(services)
    , _icons(menu, applicationIcons)
{
    const auto holders = _menu.menuAction()->associatedObjects();
    for (QObject *holder : holders)
        if (const auto *parent = qobject_cast<QMenu *>(holder))
            connect(parent, &QMenu::aboutToShow, this, &TypeApplicationsMenu::ask);
}

void TypeApplicationsMenu::ask()
{
    removeAll();
    const QStringList paths = commands.selectedPaths();
    const unsigned question = ++_lastQuestion;
    if (paths.isEmpty())
        return;
    // By pointer: the desktop outlives every question.
    _services.questions.ask(
        paths.first(),
        [paths, desktop = &_services.workspace] { return desktop->applicationsForFiles(paths); },
        [menu = QPointer(this), question](const Workspace::FileApplications &found) {
            if (menu && menu->_lastQuestion == question)
                menu->show(found);
        });
}

void TypeApplicationsMenu::removeAll()
{
    for (const QPointer<QAction> &item : std::as_const(_items)) {
        if (!item)
            continue;
        _menu.removeAction(item);
        // Later: its own signal may be what led here.
        if (QMenu *choice = item->menu())
            choice->deleteLater(); // it takes its item along
        else
            item->deleteLater();
    }
    _items.clear();
}

void TypeApplicationsMenu::show(const Workspace::FileApplications &found)
{
    if (found.all.isEmpty())
        return;
    QAction *before = _menu.isVisible() ? nullptr : _menu.actions().value(0);
    if (!before)
        _items.append(_menu.addSeparator());
    for (const Application &application : found.all.mid(0, MostShown)) {
        QAction *item = newItem(application, application.path == found.standard, _menu);
        _menu.insertAction(before, item);
        _items.append(item);
        connect(item, &QAction::triggered, this, [this, path = application.path] {
            Arrivals::afterWait(this, [this, path] { commands.openWith(path); });
        });
    }
    if (!found.type.isEmpty())
        addChoiceOfDefault(found, before);
    if (before)
        _items.append(_menu.insertSeparator(before));
}

QAction *TypeApplicationsMenu::newItem(const Application &application, bool isStandard,
                                       QMenu &parent) const
{
    const QString name = menuText(application.name);
    return new QAction(_icons.icon(application.path, themedIcon(u"application-x-executable"_s)),
                       isStandard ? filled(localized("%@ (default)"), name) : name, &parent);
}

void TypeApplicationsMenu::addChoiceOfDefault(const Workspace::FileApplications &found,
                                              QAction *before)
{
    auto *choice = new QMenu(localized("Always open with"), &_menu);
    for (const Application &application : found.all.mid(0, MostShown)) {
        QAction *item = newItem(application, false, *choice);
        choice->addAction(item);
        item->setCheckable(true);
        item->setChecked(application.path == found.standard);
        connect(item, &QAction::triggered, this,
                [this, application, type = found.type, kind = found.kind] {
                    Arrivals::afterWait(this, [=, this] { setDefault(application, type, kind); });
                });
    }
    _menu.insertMenu(before, choice);
    _items.append(choice->menuAction());
}

void TypeApplicationsMenu::setDefault(const Application &application, const QString &type,
                                      const QString &kind)
{
    const QString name = FileName::shown(application.name);
    if (_services.alerts.ask(Alert::question(
            filled(localized("Always open files of the type '%@' with '%@'?"), kind, name), type))
        != Alert::Yes)
        return;
    struct Change {
        bool isMade = false;
        QString reason {};
    };
    const auto change = _services.waiting.forAnswer(
        PathText::homeFolder(), [path = application.path, type, desktop = &_services.workspace] {
            Change now;
            now.isMade = desktop->setDefaultApplication(path, type, &now.reason);
            return now;
        });
    if (!change || !change->isMade)
        _services.alerts.ask(Alert::failure(localized("The default application cannot be set!"),
                                            change ? change->reason : QString()));
}
