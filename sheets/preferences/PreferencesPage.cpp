#include "sheets/preferences/PreferencesPage.h"

#include "settings/UserDefaults.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace {

constexpr int Margin = 16;
constexpr int ColumnSpacing = 10;
constexpr int RowSpacing = 8;
constexpr int LabelColumn = 0, ControlColumn = 1, Columns = 3;

} // namespace

PreferencesPage::PreferencesPage(UserDefaults &settings, const Mnemonics &taken)
    : defaults(settings)
    , _grid(new QGridLayout(this))
    , _mnemonics(taken)
{
    setAutoFillBackground(true); // the style's own is lighter than the sheet
    _grid->setContentsMargins(Margin, Margin, Margin, Margin);
    _grid->setHorizontalSpacing(ColumnSpacing);
    _grid->setVerticalSpacing(RowSpacing);
    _grid->setColumnStretch(Columns, 1);
}

int PreferencesPage::labelWidth() const
{
    int width = 0;
    for (const QLabel *label : _labels)
        width = std::max(width, label->sizeHint().width());
    return width;
}

void PreferencesPage::setLabelWidth(int width)
{
    if (!_labels.isEmpty())
        _grid->setColumnMinimumWidth(LabelColumn, width);
}

void PreferencesPage::finish()
{
    _grid->setRowStretch(_row, 1);
}

QLabel *PreferencesPage::addLabel(const QString &text, QWidget *control)
{
    auto *label = new QLabel(control ? _mnemonics.marked(text) : text, this);
    label->setBuddy(control);
    if (control && control->accessibleName().isEmpty()) {
        QString name = text;
        name.remove(u':');
        control->setAccessibleName(name);
    }
    _grid->addWidget(label, _row, LabelColumn, Qt::AlignRight | Qt::AlignVCenter);
    _labels.append(label);
    return label;
}

void PreferencesPage::addRow(const QString &label, QWidget *control)
{
    addLabel(label, control);
    addBehindLabel(control);
}

void PreferencesPage::addBehindLabel(QWidget *control)
{
    _grid->addWidget(control, _row++, ControlColumn, 1, Columns);
}

void PreferencesPage::addInColumns(const QList<QWidget *> &controls)
{
    for (int i = 0; i < controls.size(); ++i)
        _grid->addWidget(controls[i], _row, ControlColumn + i);
    ++_row;
}

void PreferencesPage::addWide(QWidget *control)
{
    _grid->addWidget(control, _row++, LabelColumn, 1, Columns + 1);
}

QLabel *PreferencesPage::addNote(const QString &text)
{
    auto *note = new QLabel(text, this);
    note->setWordWrap(true);
    // As wide as the page is, and not the other way round.
    note->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    addWide(note);
    return note;
}

QCheckBox *PreferencesPage::addCheckBox(Settings::Key key, bool absent, const QString &text)
{
    auto *box = new QCheckBox(_mnemonics.marked(text), this);
    box->setAccessibleName(text);
    box->setChecked(defaults.boolean(key).value_or(absent));
    connect(box, &QCheckBox::clicked, this, [this, key](bool on) { write(key, on); });
    addBehindLabel(box);
    return box;
}

QComboBox *PreferencesPage::newChoice(const QString &name, const QStringList &items)
{
    auto *choice = new QComboBox(this);
    choice->addItems(items);
    choice->setAccessibleName(name);
    choice->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return choice;
}

QPushButton *PreferencesPage::newButton(const QString &text, const QString &name)
{
    auto *button = new QPushButton(_mnemonics.marked(text), this);
    button->setAccessibleName(name.isEmpty() ? text : name);
    button->setAutoDefault(false);
    return button;
}

void PreferencesPage::write(Settings::Key key, const QVariant &value)
{
    defaults.setValue(key, value);
    Q_EMIT settingWritten(key);
}
