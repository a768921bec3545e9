#include "sheets/information/AccountBox.h"

#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QStringListModel>

#include <algorithm>

namespace {

constexpr int Letters = 14; // how wide it is; its list may be longer than it is cheap to measure

void measureOne(QAbstractItemView *view)
{
    if (auto *list = qobject_cast<QListView *>(view))
        list->setUniformItemSizes(true);
}

} // namespace

AccountBox::AccountBox(QWidget *parent)
    : QComboBox(parent)
    , _model(new QStringListModel(this))
{
    setModel(_model);
    setEditable(true);
    setInsertPolicy(NoInsert);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(Letters);
    measureOne(view());
    auto *completer = new QCompleter(_model, this);
    completer->setCompletionMode(QCompleter::PopupCompletion);
    completer->setFilterMode(Qt::MatchContains);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    measureOne(completer->popup());
    setCompleter(completer);
    connect(this, &QComboBox::activated, this, [this](int row) { _title = itemText(row); });
    connect(completer, qOverload<const QString &>(&QCompleter::activated), this,
            [this] { takeTyped(); });
}

void AccountBox::setNames(const QStringList &names)
{
    if (names == _names)
        return;
    _names = names;
    const QString typed = currentText();
    const int cursor = lineEdit()->cursorPosition();
    _model->setStringList(names);
    setTitle(_title);
    if (typed == _title)
        return;
    setEditText(typed);
    lineEdit()->setCursorPosition(cursor);
}

void AccountBox::setTitle(const QString &name)
{
    _title = name;
    // What follows the names anew takes as long as they are many.
    if (!name.isEmpty() || _model->rowCount() == 0) {
        QStringList all = _names;
        if (!name.isEmpty() && !all.contains(name))
            all.prepend(name);
        if (all != _model->stringList())
            _model->setStringList(all);
    }
    setCurrentIndex(int(_model->stringList().indexOf(name)));
    setEditText(name);
}

bool AccountBox::takeTyped()
{
    const QString typed = currentText().trimmed();
    const QStringList all = _model->stringList();
    if (all.contains(typed)) {
        _title = typed;
    } else if (!typed.isEmpty()) {
        const auto alike = std::ranges::find_if(all, [&](const QString &name) {
            return name.compare(typed, Qt::CaseInsensitive) == 0;
        });
        if (alike == all.end())
            return false;
        _title = *alike;
    }
    setCurrentIndex(int(all.indexOf(_title)));
    setEditText(_title);
    return true;
}

void AccountBox::focusOutEvent(QFocusEvent *event)
{
    QComboBox::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason)
        takeTyped();
}

void AccountBox::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        takeTyped(); // before the sheet's default button reads it
    QComboBox::keyPressEvent(event);
}
