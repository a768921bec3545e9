#include "sheets/preferences/SearchPage.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "settings/UserDefaults.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

SearchPage::SearchPage(UserDefaults &settings, const Mnemonics &taken)
    : PreferencesPage(settings, taken)
    , chooseButton(newButton(localized("Choose..."), localized("Choose folder to leave out")))
    , _field(new QLineEdit(this))
    , _list(new QListWidget(this))
{
    addNote(localized("A search of the home folder does not go into these folders. A name without "
                      "a slash stands for all folders of that name."));
    auto *adding = new QWidget(this);
    auto *columns = new QHBoxLayout(adding);
    columns->setContentsMargins(0, 0, 0, 0);
    QPushButton *add = newButton(localized("Add"), localized("Add folder to leave out"));
    columns->addWidget(_field, 1);
    columns->addWidget(chooseButton);
    columns->addWidget(add);
    addLabel(localized("Folder:"), _field);
    addBehindLabel(adding);
    _list->setAccessibleName(localized("Folders left out"));
    addWide(_list);
    QPushButton *remove = newButton(localized("Delete"), localized("Delete folder left out"));
    remove->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    addWide(remove);
    const auto stored = settings.array(Settings::SearchLeftOutFolders).value_or(QVariantList());
    for (const QVariant &entry : stored)
        if (entry.typeId() == QMetaType::QString)
            _entries.append(entry.toString());
    for (const QString &entry : std::as_const(_entries))
        _list->addItem(FileName::shown(entry));
    const QList<QWidget *> inOrder { _field, chooseButton, add, _list, remove };
    for (qsizetype i = 1; i < inOrder.size(); ++i)
        setTabOrder(inOrder[i - 1], inOrder[i]);
    add->setEnabled(false);
    remove->setEnabled(false);
    _field->installEventFilter(this);
    connect(_field, &QLineEdit::textChanged, add,
            [add](const QString &text) { add->setEnabled(!text.isEmpty()); });
    connect(_list, &QListWidget::currentRowChanged, remove,
            [remove](int row) { remove->setEnabled(row >= 0); });
    connect(add, &QPushButton::clicked, this, &SearchPage::addTyped);
    connect(remove, &QPushButton::clicked, this, &SearchPage::removeSelected);
}

// Return in the field adds what is typed there; without that it would close the sheet.
bool SearchPage::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == _field && event->type() == QEvent::KeyPress && !_field->text().isEmpty()) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            addTyped();
            return true;
        }
    }
    return PreferencesPage::eventFilter(watched, event);
}

void SearchPage::addTyped()
{
    const QString entry = _field->text();
    _field->clear();
    add(entry);
}

void SearchPage::add(const QString &entry)
{
    if (entry.isEmpty())
        return;
    qsizetype row = _entries.indexOf(entry);
    if (row < 0) {
        row = _entries.size();
        _entries.append(entry);
        _list->addItem(FileName::shown(entry));
        store();
    }
    _list->setCurrentRow(int(row));
}

void SearchPage::removeSelected()
{
    const int row = _list->currentRow();
    if (row < 0)
        return;
    _entries.removeAt(row);
    delete _list->takeItem(row);
    store();
}

void SearchPage::store()
{
    write(Settings::SearchLeftOutFolders, QVariantList(_entries.cbegin(), _entries.cend()));
}
