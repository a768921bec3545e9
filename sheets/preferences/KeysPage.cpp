#include "sheets/preferences/KeysPage.h"

#include "base/Localized.h"
#include "sheets/preferences/KeyConflicts.h"
#include "views/VirtualKeys.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Icons.h"

#include <QAccessible>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int IconSide = 16;

void keepPlace(QWidget &widget)
{
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

QString nameOfKey(int code)
{
    const QString name = VirtualKeys::name(code);
    return name.isEmpty() ? filled(localized("Key %i"), code)
                          : QKeySequence(name).toString(QKeySequence::NativeText);
}

// Of the longest line about a conflict: a row that gets one does not move the others.
int widthOfConflicts(const QFontMetrics &metrics)
{
    int width = 0;
    for (int i = 0; i < ClassicKeys::ActionCount; ++i)
        width = std::max(width,
                         metrics.horizontalAdvance(filled(localized("Same key as '%@'."),
                                                          nameOfAction(ClassicAction(i)))));
    return width;
}

} // namespace

KeysPage::KeysPage(UserDefaults &settings, const Mnemonics &taken)
    : PreferencesPage(settings, taken)
{
    for (int i = 0; i < ClassicKeys::ActionCount; ++i)
        _rows[i] = addKeyRow(ClassicAction(i));
    QPushButton *restore = newButton(localized("Restore defaults"));
    restore->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    addBehindLabel(restore);
    addNote(localized("New keys count from the next start on."));
    connect(restore, &QPushButton::clicked, this, &KeysPage::restoreAsked);
    finish();
}

KeysPage::Row KeysPage::addKeyRow(ClassicAction action)
{
    const QString name = nameOfAction(action);
    Row row {};
    row.key = newChoice(filled(localized("Key of '%@'"), name), {});
    for (const int code : VirtualKeys::FunctionKeys)
        row.key->addItem(nameOfKey(code), code);
    row.modifier = newChoice(
        filled(localized("Modifier of '%@'"), name),
        { localized("Any modifier"), localized("Shift"), localized("Alt"), localized("Ctrl") });
    // To readers a pop-up's name is what is chosen in it, and no label leads to this one.
    row.modifier->setAccessibleDescription(row.modifier->accessibleName());
    for (QComboBox *choice : { row.key, row.modifier }) // all as wide as the widest
        choice->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    addLabel(name + u':', row.key);
    addInColumns({ row.key, row.modifier, conflictOf(row) });
    for (QComboBox *choice : { row.key, row.modifier })
        connect(choice, &QComboBox::currentIndexChanged, this, &KeysPage::showConflicts);
    return row;
}

QWidget *KeysPage::conflictOf(Row &row)
{
    auto *place = new QWidget(this);
    auto *columns = new QHBoxLayout(place);
    columns->setContentsMargins(0, 0, 0, 0);
    row.warning = new QLabel(place);
    row.warning->setPixmap(
        themedIcon(u"dialog-warning"_s).pixmap(QSize(IconSide, IconSide), devicePixelRatioF()));
    keepPlace(*row.warning);
    row.warning->hide();
    row.conflict = new ElidedLabel(Qt::ElideRight, place);
    row.conflict->setMinimumWidth(widthOfConflicts(fontMetrics()));
    columns->addWidget(row.warning);
    columns->addWidget(row.conflict, 1);
    return place;
}

void KeysPage::select(const ClassicKeys::Choices &choices)
{
    for (int i = 0; i < ClassicKeys::ActionCount; ++i) {
        const auto [key, modifier] = choices[i];
        const Row &row = _rows[i];
        if (key && row.key->findData(*key) < 0)
            row.key->addItem(nameOfKey(*key), *key);
        if (key)
            row.key->setCurrentIndex(row.key->findData(*key));
        if (modifier && *modifier >= 0 && *modifier < row.modifier->count())
            row.modifier->setCurrentIndex(*modifier);
    }
    showConflicts();
}

ClassicKeys::Choices KeysPage::choices() const
{
    ClassicKeys::Choices choices;
    for (int i = 0; i < ClassicKeys::ActionCount; ++i)
        choices[i] = { _rows[i].key->currentData().toInt(), _rows[i].modifier->currentIndex() };
    return choices;
}

void KeysPage::showConflicts()
{
    if (!_rows.back().key)
        return; // not all there yet
    const ClassicKeys keys(choices());
    for (int i = 0; i < ClassicKeys::ActionCount; ++i) {
        const Row &row = _rows[i];
        const QString conflict = keyConflict(ClassicAction(i), keys);
        if (row.conflict->text() == conflict)
            continue;
        row.conflict->setText(conflict);
        row.conflict->setToolTip(conflict);
        row.warning->setHidden(conflict.isEmpty());
        row.key->setAccessibleDescription(conflict);
        row.modifier->setAccessibleDescription(conflict.isEmpty() ? row.modifier->accessibleName()
                                                                  : row.modifier->accessibleName()
                                                       + u". "_s + conflict);
        if (!conflict.isEmpty()) { // a reader speaks it unasked
            QAccessibleEvent told(row.conflict, QAccessible::Alert);
            QAccessible::updateAccessibility(&told);
        }
    }
}
