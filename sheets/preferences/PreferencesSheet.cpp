#include "sheets/preferences/PreferencesSheet.h"

#include "base/Localized.h"
#include "sheets/preferences/ApplicationsPage.h"
#include "sheets/preferences/GeneralPage.h"
#include "sheets/preferences/InfoBarsPage.h"
#include "sheets/preferences/KeysPage.h"
#include "sheets/preferences/ListsPage.h"
#include "sheets/preferences/SearchPage.h"
#include "sheets/preferences/StartFoldersPage.h"

#include <QPushButton>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

PreferencesSheet::PreferencesSheet(UserDefaults &defaults,
                                   FavoriteApplicationsController &favorites, QWidget *mainWindow)
    : Sheet(mainWindow)
    , _tabs(new QTabWidget(this))
{
    setWindowTitle(localized("Preferences"));
    setAccessibleName(windowTitle());
    rows().addWidget(_tabs);
    connect(addButton(localized("OK")), &QPushButton::clicked, this, &QDialog::accept);
    // Their letters and that of the button work on every page.
    QStringList titles { localized("General"),     localized("Lists"),         localized("Keys"),
                         localized("Info bars"),   localized("Start folders"), localized("Search"),
                         localized("Applications") };
    for (QString &title : titles)
        title = marked(title);
    const Mnemonics taken = mnemonics();
    keys = new KeysPage(defaults, taken);
    infoBars = new InfoBarsPage(defaults, taken);
    startFolders = new StartFoldersPage(defaults, taken);
    search = new SearchPage(defaults, taken);
    const QList<PreferencesPage *> pages { new GeneralPage(defaults, taken),
                                           new ListsPage(defaults, taken),
                                           keys,
                                           infoBars,
                                           startFolders,
                                           search,
                                           new ApplicationsPage(defaults, taken, favorites) };
    int labelWidth = 0;
    for (const PreferencesPage *page : pages)
        labelWidth = std::max(labelWidth, page->labelWidth());
    for (int i = 0; i < pages.size(); ++i) {
        pages[i]->setLabelWidth(labelWidth);
        _tabs->addTab(pages[i], titles[i]);
        connect(pages[i], &PreferencesPage::settingWritten, this,
                &PreferencesSheet::settingWritten);
    }
    _tabs->setUsesScrollButtons(false);
    addPageKeys();
    _tabs->setFocus();
}

// Of the whole window: a pop-up that has the keyboard would take them for letters.
void PreferencesSheet::addPageKeys()
{
    const auto add = [this](QKeyCombination key, int step) {
        connect(new QShortcut(key, this), &QShortcut::activated, _tabs, [this, step] {
            const int pages = _tabs->count();
            _tabs->setCurrentIndex((_tabs->currentIndex() + step + pages) % pages);
        });
    };
    add(Qt::CTRL | Qt::Key_Tab, 1);
    add(Qt::CTRL | Qt::Key_PageDown, 1);
    add(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, -1);
    add(Qt::CTRL | Qt::Key_PageUp, -1);
}
