#include "window/FilterBar.h"

#include "base/Localized.h"
#include "views/PaneTableView.h"
#include "widgets/Icons.h"

#include <QAction>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QStyle>

namespace {

bool isFunctionKey(const QEvent &event)
{
    const int key = static_cast<const QKeyEvent &>(event).key();
    return key >= Qt::Key_F1 && key <= Qt::Key_F35;
}

} // namespace

FilterField::FilterField(PaneTableView &pane, QWidget *parent)
    : QLineEdit(parent)
    , list(pane)
{
    setAccessibleName(localized(pane.side() == Side::Left ? "Left filter" : "Right filter"));
    setPlaceholderText(localized("Part of a name, or a pattern such as *.txt"));
    addAction(themedIcon(QStringLiteral("view-filter")), LeadingPosition)
        ->setText(accessibleName());
    auto *end = addAction(style()->standardIcon(QStyle::SP_LineEditClearButton), TrailingPosition);
    end->setText(localized("Show all items"));
    connect(end, &QAction::triggered, this, &FilterField::ended);
}

bool FilterField::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && isFunctionKey(*event))
        return QCoreApplication::sendEvent(&list, event);
    return QLineEdit::event(event);
}

void FilterField::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        Q_EMIT ended();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        list.setFocus();
        return;
    default:
        if (isFunctionKey(*event))
            QCoreApplication::sendEvent(&list, event);
        else
            QLineEdit::keyPressEvent(event);
    }
}

bool FilterField::focusNextPrevChild(bool)
{
    list.setFocus();
    return true;
}

FilterBar::FilterBar(PaneTableView &pane, QWidget *parent)
    : QWidget(parent)
    , field(new FilterField(pane, this))
{
    auto *columns = new QHBoxLayout(this);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->addWidget(field);
    hide();
}
