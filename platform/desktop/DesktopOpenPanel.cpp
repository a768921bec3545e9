#include "platform/desktop/DesktopOpenPanel.h"

#include "base/Localized.h"
#include "platform/desktop/InstalledApplications.h"
#include "platform/OpenDialogs.h"

#include <QFileDialog>

std::optional<QString> DesktopOpenPanel::chooseApplication()
{
    const OpenDialogs::Guard guard(_openDialogs);
    return ApplicationPanel(InstalledApplications::all(), Sheet::topmost(_parent)).choose();
}

std::optional<QString> DesktopOpenPanel::chooseFolder(const QString &start)
{
    const OpenDialogs::Guard guard(_openDialogs);
    // The dialog cannot go to a folder whose name is no text; it starts at home then.
    const QString folder =
        QFileDialog::getExistingDirectory(Sheet::topmost(_parent), localized("Choose Folder"),
                                          start.isValidUtf16() ? start : QString());
    return folder.isEmpty() ? std::nullopt : std::optional(folder);
}
