#include "window/UnifiedToolBar.h"

#include "base/Localized.h"
#include "widgets/Icons.h"

#include <QActionEvent>
#include <QApplication>
#include <QKeyEvent>
#include <QLayout>
#include <QPainter>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int IconSide = 24; // that the drawings are made for
constexpr int TopMargin = 8; // as much as stands below it
constexpr double FocusWidth = 2;
constexpr double FocusRadius = 3;
constexpr int SpaceWidth = 32;

} // namespace

UnifiedToolBar::UnifiedToolBar(QWidget *parent)
    : QToolBar(parent)
{
    setMovable(false);
    setIconSize({ IconSide, IconSide });
    layout()->setContentsMargins(0, TopMargin, 0, 0); // the panes have their own
    setAccessibleName(localized("Toolbar"));
    // The toolkit's own button for what has no room.
    if (auto *more = findChild<QToolButton *>(u"qt_toolbar_ext_button"_s)) {
        more->setAccessibleName(localized("More items"));
        more->setToolTip(more->accessibleName());
        more->setIcon(toolbarIcon(u"more"_s)); // the style's may be dark on dark
        more->setFocusPolicy(Qt::TabFocus);
        more->installEventFilter(this);
    }
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *before, QWidget *now) {
        if (isAncestorOf(now) && !isAncestorOf(before))
            _before = before;
        if (isAncestorOf(now) || isAncestorOf(before))
            update();
    });
}

QAction *UnifiedToolBar::addSpace(bool flexible)
{
    auto *space = new QWidget(this);
    space->setAttribute(Qt::WA_TransparentForMouseEvents);
    if (flexible)
        space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    else
        space->setFixedWidth(SpaceWidth);
    return addWidget(space);
}

void UnifiedToolBar::hideIdleSeparators()
{
    QAction *separator = nullptr;
    bool anyBefore = false;
    const auto items = actions();
    for (QAction *item : items) {
        if (item->isSeparator()) {
            item->setVisible(false);
            if (anyBefore)
                separator = item;
        } else if (item->isVisible()) {
            if (separator)
                separator->setVisible(true);
            separator = nullptr;
            anyBefore = true;
        }
    }
}

QList<QToolButton *> UnifiedToolBar::pressable() const
{
    QList<QToolButton *> buttons;
    const auto items = actions();
    for (QAction *item : items)
        if (auto *button = qobject_cast<QToolButton *>(widgetForAction(item)))
            buttons.append(button);
    if (auto *more = findChild<QToolButton *>(u"qt_toolbar_ext_button"_s))
        buttons.append(more);
    buttons.removeIf(
        [](const QToolButton *button) { return !button->isVisible() || !button->isEnabled(); });
    return buttons;
}

void UnifiedToolBar::takeKeyboard()
{
    if (const auto buttons = pressable(); !buttons.isEmpty())
        buttons.first()->setFocus(Qt::TabFocusReason);
}

void UnifiedToolBar::giveKeyboardBack()
{
    if (isAncestorOf(window()->focusWidget()) && _before)
        _before->setFocus();
}

void UnifiedToolBar::paintEvent(QPaintEvent *)
{
    // The window's background goes on under the bar. Under its buttons, which are transparent, it
    // shows where the keyboard is: the style's own mark is faint, and hardly there for a narrow
    // one.
    const QWidget *focus = window()->focusWidget();
    if (!isActiveWindow() || !isAncestorOf(focus))
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen({ palette().color(QPalette::Highlight), FocusWidth });
    constexpr double Inset = FocusWidth / 2;
    painter.drawRoundedRect(QRectF(focus->geometry()).adjusted(Inset, Inset, -Inset, -Inset),
                            FocusRadius, FocusRadius);
}

void UnifiedToolBar::actionEvent(QActionEvent *event)
{
    QToolBar::actionEvent(event);
    auto *button = event->type() == QEvent::ActionAdded
        ? qobject_cast<QToolButton *>(widgetForAction(event->action()))
        : nullptr;
    if (!button)
        return;
    button->setFocusPolicy(Qt::TabFocus); // not by clicks: the pane must keep it
    button->installEventFilter(this);
}

bool UnifiedToolBar::eventFilter(QObject *watched, QEvent *event)
{
    auto *button = qobject_cast<QToolButton *>(watched);
    if (button && event->type() == QEvent::KeyPress
        && goAlong(*button, static_cast<QKeyEvent *>(event)->key()))
        return true;
    return QToolBar::eventFilter(watched, event);
}

bool UnifiedToolBar::goAlong(QToolButton &from, int key)
{
    const auto buttons = pressable();
    auto next = buttons.indexOf(&from);
    if (next < 0)
        return false;
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        next += (key == Qt::Key_Left) == isLeftToRight() ? -1 : 1;
        break;
    case Qt::Key_Home:
        next = 0;
        break;
    case Qt::Key_End:
        next = buttons.size() - 1;
        break;
    case Qt::Key_Up:
    case Qt::Key_Down:
        break; // would go to any widget near by
    case Qt::Key_Return:
    case Qt::Key_Enter:
        from.click();
        return true;
    case Qt::Key_Escape:
        giveKeyboardBack();
        return true;
    default:
        return false;
    }
    buttons[std::clamp<qsizetype>(next, 0, buttons.size() - 1)]->setFocus(Qt::TabFocusReason);
    return true;
}
