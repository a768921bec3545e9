#pragma once

#include "model/Messages.h"
#include "model/PaneTable.h"
#include "views/ClassicKeys.h"
#include "views/PaneTableModel.h"

#include <QBitArray>
#include <QElapsedTimer>
#include <QTableView>

#include <array>

class CutItems;
class MainModel;
class MessageBus;

// A pane's file list. Turns keys and clicks into messages on the bus and does no file work itself.
// Selected rows are kept as bits beside the selection model, whose own queries walk every range.
// Rows can be marked one by one: these are then what is selected, and the keyboard goes about
// without changing it, until none is marked, a plain click, or a single row that a command selects.
class PaneTableView : public QTableView, public PaneTable {
    Q_OBJECT

public:
    PaneTableView(Side side, MessageBus &bus, MainModel &mainModel, UserDefaults &defaults,
                  QWidget *parent = nullptr);
    ~PaneTableView() override;

    PaneTableModel &tableModel() const { return *_tableModel; }
    void setDateFormat(const QString &format); // and the width of its column
    // In pixels, by column; 0 for one that still has the width it was made with, and for the names,
    // which take what the others leave.
    QList<int> chosenWidths() const;
    void setColumnWidths(const QList<int> &widths); // 0: as it is
    const ClassicKeys &classicKeys() const { return _classicKeys; }

    Side side() const override { return _side; }
    int selectedRow() const override;
    RowSet selectedRows() const override;
    int rowCount() const override { return _tableModel->rowCount(); }
    void selectRow(int row) override;
    void selectRows(const RowSet &rows) override;
    void scrollToRow(int row) override;
    void goToRow(int row) override;
    int rowOfKeyboard() const override;
    ShownRows shownRows() const override;
    void showRows(const ShownRows &rows) override;
    void changeRows(const RowChanges &changes) override;
    void setQuiet(bool quiet) override { _quiet = quiet; }
    std::optional<Column> highlightedColumn() const override { return _highlightedColumn; }
    void setSortIndicator(Column column, SortDirection direction) override;
    bool isPointedAt() const override;
    void redraw() override;

    int numberOfSelectedRows() const { return int(_selected.count(true)); }
    bool isRowSelected(int row) const
    {
        return row >= 0 && row < _selected.size() && _selected[row];
    }
    void deselectRow(int row);

    void copyItemClicked();
    void moveItemClicked();
    void newFolderClicked();
    void deleteItemClicked();
    void renameItemClicked();
    virtual void showInfoClicked();

    // Whether commands act on this pane: also while a sheet or a menu has the keyboard.
    void setActivePane(bool active);

    // Outlet: the items that it shows pale.
    void setCutItems(const CutItems &cutItems);

    // Marks the row that a drop would go into; with one that is none the pane as a whole.
    void showDropTarget(int row);
    void hideDropTarget();
    QPixmap dragPixmap() const; // the visible ones of the selected rows, as far as is readable

    void keyDown(QKeyEvent *event);
    void keyboardSearch(const QString &) override { } // type-ahead goes by the bus
    void reset() override;

Q_SIGNALS:
    void terminateRequested(); // the exit key
    void otherPaneRequested(); // Tab or Shift+Tab
    void patternRequested(bool select); // to select or deselect by, + and - of the keypad
    void allRowsRequested(); // Escape with nothing selected
    void dragRequested(); // of the selected rows
    void contextMenuRequested(const QPoint &globalPosition); // for the selected rows
    void folderMenuRequested(const QPoint &globalPosition); // where there is no row
    void columnClicked(Column column);
    void selectedRowsChanged();

protected:
    bool isOnItem() const; // the selected row is one that commands may act on
    void post(const Message<ItemRequest> &message, const RowSet &rows) const;

    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override { keyDown(event); }
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void startDrag(Qt::DropActions) override { Q_EMIT dragRequested(); }
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void selectionChanged(const QItemSelection &selected,
                          const QItemSelection &deselected) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void focusInEvent(QFocusEvent *event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index,
                                                         const QEvent *event) const override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers held) override;

private:
    void setUpColumns();
    void makeColumn(Column column, int width);
    void giveRoomToNames();
    void setUpRowHeight();
    void sectionClicked(int section);
    void showSortIndicator();
    void selectRowBefore(const RowCount &answer);
    void perform(ClassicAction action);
    bool performFixedKey(int keyCode);
    bool performMarkKey(int keyCode);
    bool performUnlessBound(int keyCode, ClassicAction action);
    RowsOfPane rowsOfPane(const RowSet &rows) const;

    // PaneTableViewSelection.cpp, with the public functions on rows
    void rememberSelection();
    void tellSelection();
    void tellCurrentRow(); // to screen readers
    QItemSelection ranges(const RowSet &rows) const;
    void select(const QItemSelection &selection); // in place of the present one
    void setCurrentRow(int row);
    int otherEndOfRange(int row) const;

    // PaneTableViewMarks.cpp, with what the keyboard does to marks
    void keepMarks(); // through what extends the selection
    void handOn(QKeyEvent *event); // a key that is the toolkit's
    void endMarksByClick(const QMouseEvent &event);

    // PaneTableViewPainting.cpp
    QString trouble() const; // why there are no rows; "" when the folder could be read
    QColor selectionColor() const;
    QColor selectedTextColor() const;
    void paintFrame();
    void paintDropTarget(QPainter &painter);
    QRect rowArea(int row) const;
    void paintRow(QPainter &painter, int row);
    bool isCut(int row) const;
    QColor paintRowBackground(QPainter &painter, int row, const QRect &area); // answers the text's
    void paintPlate(QPainter &painter, int row, const QRect &iconCell); // under a selected icon
    static void paintLabel(QPainter &painter, const QRect &area, const QColor &color);
    static void paintLinkBadge(QPainter &painter, const QRect &iconCell);

    const Side _side;
    MessageBus &bus;
    PaneTableModel *_tableModel; // the view's own child
    const ClassicKeys _classicKeys;
    std::optional<Column> _highlightedColumn;
    SortDirection _sortDirection = SortDirection::Ascending;
    std::array<int, ColumnCount> _madeWidths {}; // in pixels, before a person changed them
    QBitArray _selected;
    int _newestRow = -1;
    bool _marks = false; // the selected rows are marked ones
    bool _settingCurrentRow = false;
    bool _changingRows = false;
    bool _quiet = false;
    bool _isActive = false;
    std::optional<int> _dropRow; // -1: the pane
    QElapsedTimer _sinceClick;
    const CutItems *_cutItems = nullptr; // not owned
};
