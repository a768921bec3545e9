#include "views/PaneTableView.h"
#include "views/RowMarks.h"
#include "views/VirtualKeys.h"

#include <QMouseEvent>

bool PaneTableView::performMarkKey(int keyCode)
{
    if (_classicKeys.isOfAny(keyCode))
        return false;
    switch (keyCode) {
    case VirtualKeys::Insert:
        showRows(RowMarks::afterMarking(shownRows(), rowCount()));
        scrollToRow(currentIndex().row());
        return true;
    case VirtualKeys::KeypadStar:
        showRows(RowMarks::afterInverting(shownRows(), rowCount()));
        return true;
    case VirtualKeys::KeypadPlus:
    case VirtualKeys::KeypadMinus:
        Q_EMIT patternRequested(keyCode == VirtualKeys::KeypadPlus);
        return true;
    default:
        return false;
    }
}

void PaneTableView::goToRow(int row)
{
    if (_marks) {
        keepMarks();
        setCurrentRow(row);
    } else {
        selectRow(row);
    }
    scrollToRow(row);
}

int PaneTableView::rowOfKeyboard() const
{
    return _marks ? currentIndex().row() : selectedRow();
}

void PaneTableView::keepMarks()
{
    // The selection model counts them no longer as what Shift with the arrows draws out.
    if (_marks)
        selectionModel()->select(QItemSelection(), QItemSelectionModel::Select);
}

void PaneTableView::handOn(QKeyEvent *event)
{
    if (!(event->modifiers() & Qt::ShiftModifier))
        keepMarks();
    QTableView::keyPressEvent(event);
}

void PaneTableView::mousePressEvent(QMouseEvent *event)
{
    _sinceClick.start();
    QTableView::mousePressEvent(event);
    endMarksByClick(*event);
}

void PaneTableView::mouseReleaseEvent(QMouseEvent *event)
{
    QTableView::mouseReleaseEvent(event);
    endMarksByClick(*event); // a press on a selected row may begin a drag: only now it was a click
}

void PaneTableView::endMarksByClick(const QMouseEvent &event)
{
    const bool plain = !(event.modifiers() & (Qt::ControlModifier | Qt::ShiftModifier));
    if (plain && event.button() == Qt::LeftButton && numberOfSelectedRows() <= 1)
        _marks = false;
}
