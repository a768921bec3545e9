#include "sheets/preferences/StartFoldersPage.h"

#include "base/Localized.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

StartFoldersPage::StartFoldersPage(UserDefaults &settings, const Mnemonics &taken)
    : PreferencesPage(settings, taken)
{
    addLabel(localized("At the start:"));
    saveLastPaths = addCheckBox(Settings::SaveLastPaths, true,
                                localized("Show the folders that were open last"));
    for (const Side side : { Side::Left, Side::Right }) {
        const bool left = side == Side::Left;
        auto *row = new QWidget(this);
        auto *columns = new QHBoxLayout(row);
        columns->setContentsMargins(0, 0, 0, 0);
        // Shown as paths are shown, which is not what they are called: searched, not typed.
        lastPath[side] = new QLineEdit(row);
        lastPath[side]->setReadOnly(true);
        searchButton[side] = newButton(
            localized("Choose..."), localized(left ? "Choose left folder" : "Choose right folder"));
        columns->addWidget(lastPath[side], 1);
        columns->addWidget(searchButton[side]);
        addLabel(localized(left ? "Left folder:" : "Right folder:"), lastPath[side]);
        addBehindLabel(row);
    }
    finish();
}
