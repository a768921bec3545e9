#include "widgets/MenuIcons.h"

#include "files/DiskQuestions.h"
#include "files/FileStatus.h"

#include <QAction>
#include <QMenu>
#include <QPointer>

namespace {

constexpr auto Asked = "iconAsked"; // property of an item

} // namespace

MenuIcons::MenuIcons(QMenu &pathMenu, DiskQuestions &diskQuestions, IconOf iconOf)
    : menu(pathMenu)
    , questions(diskQuestions)
    , _iconOf(std::move(iconOf))
{
    connect(&menu, &QMenu::aboutToShow, this, &MenuIcons::ask);
}

void MenuIcons::ask()
{
    const auto items = menu.actions();
    for (QAction *item : items) {
        const QString path = item->data().toString();
        if (path.isEmpty() || item->property(Asked).toBool())
            continue;
        item->setProperty(Asked, true);
        questions.ask(
            path, [path] { return fileStatus(path, Links::Follow); },
            [icons = QPointer(this), item = QPointer(item),
             path](const std::optional<FileStatus> &status) {
                if (icons && item && status)
                    item->setIcon(icons->_iconOf(path, *status));
            });
    }
}
