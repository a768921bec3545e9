#pragma once

#include "views/IncomingItems.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

class Alerts;
class FileQueries;
class MainModel;
class OperationDesk;
class PaneTableView;
class QDragMoveEvent;
class QDropEvent;
class QMimeData;

// Rows dragged out of a pane as file: URLs, and files dropped into it from the other pane or from
// another program, to be copied, moved or aliased there. Main thread.
class PaneDragAndDrop final : public QObject {
    Q_OBJECT

public:
    PaneDragAndDrop(PaneTableView &fileList, const MainModel &mainModel, const FileQueries &queries,
                    OperationDesk &twinleaf, Alerts &alerts);

    // Kept: ".." is not left out; dragging it drags the listed folder itself.
    QMimeData *writeRows(const QList<int> &rows) const;

    // Files dropped into a folder, with the source's mask of DragOperation bits. Asks first where
    // the person wants it so; false when the drop is refused.
    bool acceptInto(const QString &destination, const QStringList &paths, int mask,
                    bool fromOutside);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void startDrag();
    void dragMove(QDragMoveEvent &event);
    void drop(QDropEvent &event);
    void dragEnded();
    // A drag that is held at the upper or lower edge brings further rows into view.
    void scrollAtEdge();
    // The row that a drop goes to: over a file it is row 0, and with it the listed folder.
    int proposedRow(int y) const;
    void showTarget(); // for where the drag is
    QString destinationOf(int row) const;

    PaneTableView &fileList;
    const MainModel &mainModel;
    Alerts &alerts;
    const IncomingItems _incoming;
    // Of the drag that is over the pane.
    bool _dragHoldsFiles = false;
    int _dragY = 0; // pixels from the viewport's upper edge
    QTimer _edgeScroll;
};
