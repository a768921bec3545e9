#include "window/HistoryButtons.h"

#include <QMouseEvent>
#include <QWidget>

HistoryButtons::HistoryButtons(QWidget &pane, Go go)
    : QObject(&pane)
    , _go(std::move(go))
{
    pane.installEventFilter(this);
    const auto parts = pane.findChildren<QWidget *>();
    for (QWidget *part : parts)
        part->installEventFilter(this);
}

bool HistoryButtons::eventFilter(QObject *watched, QEvent *event)
{
    // Two in a row, and the second comes as a double click.
    const bool presses =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (!presses && event->type() != QEvent::MouseButtonRelease)
        return QObject::eventFilter(watched, event);
    const Qt::MouseButton button = static_cast<QMouseEvent *>(event)->button();
    if (button != Qt::BackButton && button != Qt::ForwardButton)
        return QObject::eventFilter(watched, event);
    if (presses)
        _go(button == Qt::BackButton ? FolderHistory::Way::Back : FolderHistory::Way::Forward);
    return true;
}
