#include "sheets/preferences/GeneralPage.h"

#include "base/Localized.h"
#include "settings/PathNavigatorStyle.h"
#include "settings/UserDefaults.h"

#include <QComboBox>
#include <QSpinBox>

GeneralPage::GeneralPage(UserDefaults &settings, const Mnemonics &taken)
    : PreferencesPage(settings, taken)
{
    addLabel(localized("Questions:"));
    addCheckBox(Settings::ConfirmationForFileOperations, true,
                localized("Ask before file operations"));
    addLabel(localized("Window:"));
    addCheckBox(Settings::UseFlatUnifiedLook, false, localized("Flat look"));
    addNavigatorRows();
    finish();
}

void GeneralPage::addNavigatorRows()
{
    const auto style = PathNavigatorStyle::fromDefaults(defaults);
    const QStringList sizes { localized("Small"), localized("Mini") };
    navigatorsSize = newChoice({}, sizes);
    navigatorsSize->setCurrentIndex(style.mini ? 1 : 0);
    addRow(localized("Path navigators:"), navigatorsSize);
    const QStringList styles { localized("Normal"), localized("Bold") };
    navigatorsFontStyle = newChoice({}, styles);
    navigatorsFontStyle->setCurrentIndex(style.bold ? 1 : 0);
    addRow(localized("Font of the paths:"), navigatorsFontStyle);
    navigatorsFontSize = new QSpinBox(this);
    navigatorsFontSize->setRange(1, PathNavigatorStyle::LargestFontSize);
    navigatorsFontSize->setSuffix(localized(" points"));
    navigatorsFontSize->setValue(style.fontSize);
    navigatorsFontSize->setKeyboardTracking(false); // "14" is no change to 1
    navigatorsFontSize->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    addRow(localized("Font size of the paths:"), navigatorsFontSize);

    connect(navigatorsSize, &QComboBox::activated, this,
            [this, sizes](int chosen) { write(Settings::PathNavigatorsSize, sizes[chosen]); });
    connect(navigatorsFontStyle, &QComboBox::activated, this, [this, styles](int chosen) {
        write(Settings::PathNavigatorsFontStyle, styles[chosen]);
        // A stored size counts from now on.
        const QSignalBlocker shownOnly(navigatorsFontSize);
        navigatorsFontSize->setValue(PathNavigatorStyle::fromDefaults(defaults).fontSize);
    });
    connect(navigatorsFontSize, &QSpinBox::valueChanged, this, [this, styles](int points) {
        // A size without a stored style would change nothing that can be seen.
        if (!PathNavigatorStyle::hasFontStyle(defaults))
            defaults.setValue(Settings::PathNavigatorsFontStyle,
                              styles[navigatorsFontStyle->currentIndex()]);
        write(Settings::PathNavigatorsFontSize, points);
    });
}
