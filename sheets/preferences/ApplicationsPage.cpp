#include "sheets/preferences/ApplicationsPage.h"

#include "base/Localized.h"
#include "sheets/preferences/FavoriteApplicationsController.h"
#include "widgets/RecordTable.h"

#include <QHBoxLayout>
#include <QPushButton>

ApplicationsPage::ApplicationsPage(UserDefaults &settings, const Mnemonics &taken,
                                   FavoriteApplicationsController &favorites)
    : PreferencesPage(settings, taken)
{
    auto *table = new RecordTable(favorites.model(), this);
    table->setAccessibleName(localized("Favorite applications"));
    addNote(localized("Offered to open files with:"));
    addWide(table);
    auto *row = new QWidget(this);
    auto *buttons = new QHBoxLayout(row);
    buttons->setContentsMargins(0, 0, 0, 0);
    QPushButton *add = newButton(localized("Add..."));
    QPushButton *remove = newButton(localized("Delete"));
    buttons->addWidget(add);
    buttons->addWidget(remove);
    buttons->addStretch();
    addWide(row);
    connect(table, &RecordTable::selectedRowChanged, remove,
            [table, remove] { remove->setEnabled(table->selectedRow() >= 0); });
    connect(add, &QPushButton::clicked, &favorites, &FavoriteApplicationsController::addEntry);
    connect(remove, &QPushButton::clicked, &favorites,
            &FavoriteApplicationsController::deleteEntry);
    favorites.setTable(table);
    table->selectRow(0);
}
