#include "sheets/bookmarks/BookmarkSheet.h"

#include "base/Localized.h"
#include "widgets/PathField.h"
#include "widgets/RecordTable.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int Letters = 90; // of a row

} // namespace

BookmarkSheet::BookmarkSheet(RecordTableModel &bookmarks, DiskQuestions &questions,
                             QWidget *mainWindow)
    : Sheet(mainWindow)
    , pathField(new PathField(questions, this))
    , table(new RecordTable(bookmarks, this))
{
    setWindowTitle(localized("Bookmark manager"));
    setAccessibleName(windowTitle());
    QLabel *label = addText(localized("Folder:"));
    label->setText(marked(localized("Folder:")));
    label->setBuddy(pathField);
    pathField->setAccessibleName(localized("Folder:"));
    auto *adding = new QHBoxLayout;
    rows().addLayout(adding);
    const auto newButton = [this](const QString &text) {
        auto *button = new QPushButton(marked(text), this);
        button->setAccessibleName(text);
        return button;
    };
    QPushButton *choose = newButton(localized("Choose..."));
    QPushButton *add = newButton(localized("Add"));
    adding->addWidget(pathField, 1);
    adding->addWidget(choose);
    adding->addWidget(add);
    table->setAccessibleName(localized("Bookmarks"));
    table->setMinimumWidth(Letters
                           * fontMetrics().averageCharWidth()); // two paths beside each other
    rows().addWidget(table);
    QPushButton *remove = newButton(localized("Delete"));
    addBesideButtons(*remove);
    QPushButton *done = addButton(localized("Done"));
    setTabOrder(pathField, choose);
    setTabOrder(choose, add);
    setTabOrder(add, table);
    setTabOrder(table, remove);
    setTabOrder(remove, done);
    add->setDefault(true); // Return in the field adds what is typed there
    add->setEnabled(false);
    remove->setEnabled(false);

    connect(pathField, &QLineEdit::textChanged, add,
            [add](const QString &text) { add->setEnabled(!text.trimmed().isEmpty()); });
    connect(table, &RecordTable::selectedRowChanged, remove,
            [this, remove] { remove->setEnabled(table->selectedRow() >= 0); });
    connect(add, &QPushButton::clicked, this, &BookmarkSheet::addAsked);
    connect(choose, &QPushButton::clicked, this, &BookmarkSheet::chooseAsked);
    connect(remove, &QPushButton::clicked, this, &BookmarkSheet::deleteAsked);
    connect(table, &RecordTable::deleteAsked, this, &BookmarkSheet::deleteAsked);
    connect(table, &RecordTable::moveAsked, this, &BookmarkSheet::moveAsked);
    connect(done, &QPushButton::clicked, this, &BookmarkSheet::doneAsked);
    pathField->setFocus();
}
