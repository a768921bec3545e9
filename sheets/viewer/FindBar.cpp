#include "sheets/viewer/FindBar.h"

#include "base/Localized.h"
#include "widgets/ElidedLabel.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

constexpr int LongestText = 1000; // characters
constexpr int StateLetters = 18;
constexpr int FieldLetters = 14;

} // namespace

FindBar::FindBar(const std::function<QString(const QString &)> &marked, QWidget *parent)
    : QWidget(parent)
    , field(new QLineEdit(this))
    , ignoreCase(new QCheckBox(marked(localized("Ignore case")), this))
    , next(new QPushButton(marked(localized("Next")), this))
    , previous(new QPushButton(marked(localized("Previous")), this))
    , state(new ElidedLabel(Qt::ElideRight, this))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    auto *label = new QLabel(marked(localized("Search for:")), this);
    label->setBuddy(field);
    field->setAccessibleName(localized("Search for:"));
    field->setMaxLength(LongestText);
    field->setMinimumWidth(FieldLetters * fontMetrics().averageCharWidth());
    field->setClearButtonEnabled(true);
    field->installEventFilter(this);
    ignoreCase->setAccessibleName(localized("Ignore case"));
    ignoreCase->setChecked(true);
    next->setAccessibleName(localized("Next"));
    previous->setAccessibleName(localized("Previous"));
    state->setTextFormat(Qt::PlainText);
    state->setMinimumWidth(StateLetters * fontMetrics().averageCharWidth());
    for (QPushButton *button : { next, previous })
        button->setAutoDefault(false);
    row->addWidget(label);
    row->addWidget(field, 1);
    for (QWidget *widget : { static_cast<QWidget *>(next), static_cast<QWidget *>(previous),
                             static_cast<QWidget *>(ignoreCase), static_cast<QWidget *>(state) })
        row->addWidget(widget);
    connect(next, &QPushButton::clicked, this, &FindBar::nextAsked);
    connect(previous, &QPushButton::clicked, this, &FindBar::previousAsked);
}

void FindBar::takeKeyboard()
{
    show();
    field->selectAll();
    field->setFocus(Qt::ShortcutFocusReason);
}

void FindBar::setAsBytes(bool asBytes)
{
    field->setPlaceholderText(asBytes ? localized("Bytes such as 0d 0a, or \"text\"") : QString());
}

void FindBar::showState(const QString &text)
{
    state->setText(text);
}

bool FindBar::eventFilter(QObject *, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
        return false;
    if (key->modifiers() & Qt::ShiftModifier)
        Q_EMIT previousAsked();
    else
        Q_EMIT nextAsked();
    return true;
}
