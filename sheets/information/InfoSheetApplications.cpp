#include "base/Localized.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "model/FileQueries.h"
#include "platform/OpenPanel.h"
#include "sheets/information/InfoSheet.h"
#include "sheets/information/InfoSheetController.h"
#include "widgets/Icons.h"
#include "widgets/PathIcons.h"

#include <QComboBox>

#include <algorithm>

using namespace Qt::StringLiterals;

// The pop-up of the applications that may open the item.

void InfoSheetController::OpenWithChanged()
{
    InfoSheet &shown = sheet();
    if (shown.OpenWith->currentText() != localized("Other..."))
        return;
    const auto application = openPanel.chooseApplication();
    if (!application)
        return shown.OpenWith->setCurrentIndex(0);
    addItemForLaunchApp(*application);
    shown.OpenWith->setCurrentText(titleOf(*application));
}

QString InfoSheetController::titleOf(const QString &application)
{
    return FileName::shown(PathText::withoutExtension(PathText::lastComponent(application)));
}

void InfoSheetController::addItemForLaunchApp(const QString &application)
{
    launchApplications.append(application);
    setLaunchAppItems();
}

void InfoSheetController::setLaunchAppItems()
{
    QComboBox &openWith = *sheet().OpenWith;
    for (const QString &application : std::as_const(launchApplications)) {
        const bool isPath = application.startsWith(u'/');
        const QString title = isPath ? titleOf(application) : application;
        // One item to a title: the later one takes the place of the earlier.
        if (const int earlier =
                openWith.findText(title, Qt::MatchFixedString | Qt::MatchCaseSensitive);
            earlier >= 0)
            openWith.removeItem(earlier);
        openWith.addItem(isPath ? iconOf(application) : QIcon(), title);
    }
}

QIcon InfoSheetController::iconOf(const QString &application)
{
    return applicationIcon(applicationIcons.look(application).icon);
}

void InfoSheetController::showIconOf(const QString &application)
{
    // Of several with one title it is the last one's item.
    const QString title = titleOf(application);
    const auto last = std::find_if(launchApplications.crbegin(), launchApplications.crend(),
                                   [&](const QString &one) { return titleOf(one) == title; });
    if (last != launchApplications.crend() && *last == application)
        sheet().OpenWith->setItemIcon(sheet().OpenWith->findText(title), iconOf(application));
}

QString InfoSheetController::getCurrentLaunchApp()
{
    // Kept: the first path that holds the title anywhere, so that an application whose name is part
    // of an earlier one's path is taken for that.
    const QString title = sheet().OpenWith->currentText();
    for (const QString &application : std::as_const(launchApplications))
        if (FileQueries::isStringInSubstring(FileName::shown(application), title))
            return application;
    return {};
}
