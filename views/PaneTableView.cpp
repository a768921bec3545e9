#include "views/PaneTableView.h"

#include "base/Localized.h"
#include "model/MainModel.h"
#include "views/VirtualKeys.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>

namespace {

constexpr int IconColumnWidth = 20; // pixels
constexpr int LeastNameWidth = 120; // pixels
constexpr int NameLetters = 22; // that are read at a glance
constexpr int TypeLetters = 19;
constexpr int LeastTypeLetters = 11;
constexpr int CellMargin = 8; // on either side of a date

// These belong to the desktop. It asks for the menu by itself where the keyboard has the first one.
bool isMenuKey(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Menu
        || (event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier);
}

} // namespace

PaneTableView::PaneTableView(Side side, MessageBus &messages, MainModel &mainModel,
                             UserDefaults &defaults, QWidget *parent)
    : QTableView(parent)
    , _side(side)
    , bus(messages)
    , _tableModel(new PaneTableModel(side, mainModel, defaults, this))
    , _classicKeys(ClassicKeys::fromDefaults(defaults))
{
    setModel(_tableModel);
    setAccessibleName(localized(side == Side::Left ? "Left files" : "Right files"));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setTextElideMode(Qt::ElideRight);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setLineWidth(2);
    setUpColumns();
    setUpRowHeight();
    rememberSelection();
    bus.subscribe(SelectRow[side], this, &PaneTableView::selectRowBefore);
}

PaneTableView::~PaneTableView()
{
    bus.unsubscribe(this);
}

void PaneTableView::setUpColumns()
{
    QHeaderView *header = horizontalHeader();
    header->setHighlightSections(false);
    header->setSectionsClickable(true);
    header->setMinimumSectionSize(IconColumnWidth);
    header->setSectionResizeMode(int(Column::Icon), QHeaderView::Fixed);
    header->resizeSection(int(Column::Icon), IconColumnWidth);
    const int digits = fontMetrics().horizontalAdvance(u'0');
    makeColumn(Column::Size, 11 * digits);
    makeColumn(Column::Date, 17 * digits);
    makeColumn(Column::Type, TypeLetters * digits);
    connect(header, &QHeaderView::sectionClicked, this, &PaneTableView::sectionClicked);
}

void PaneTableView::setUpRowHeight()
{
    // Fixed heights: nothing is measured per row, however many there are.
    QHeaderView *header = verticalHeader();
    header->hide();
    const int height = fontMetrics().height() + 6;
    header->setMinimumSectionSize(height);
    header->setDefaultSectionSize(height);
    header->setSectionResizeMode(QHeaderView::Fixed);
}

void PaneTableView::sectionClicked(int section)
{
    // The header moves its arrow by itself; the arrow belongs to the column the rows are sorted by.
    showSortIndicator();
    Q_EMIT columnClicked(static_cast<Column>(section));
}

void PaneTableView::setSortIndicator(Column column, SortDirection direction)
{
    _highlightedColumn = column;
    _sortDirection = direction;
    showSortIndicator();
}

void PaneTableView::showSortIndicator()
{
    QHeaderView *header = horizontalHeader();
    header->setSortIndicatorShown(_highlightedColumn.has_value());
    if (_highlightedColumn)
        header->setSortIndicator(int(*_highlightedColumn),
                                 _sortDirection == SortDirection::Ascending ? Qt::AscendingOrder
                                                                            : Qt::DescendingOrder);
}

RowsOfPane PaneTableView::rowsOfPane(const RowSet &rows) const
{
    return { .rows = rows, .seen = _tableModel->rows() };
}

void PaneTableView::post(const Message<ItemRequest> &message, const RowSet &rows) const
{
    bus.post(message, { .side = _side, .item = rows, .seen = _tableModel->rows() });
}

bool PaneTableView::isOnItem() const
{
    return isItemRow(selectedRow());
}

void PaneTableView::copyItemClicked()
{
    if (isOnItem())
        post(CopyItem, selectedRows());
}

void PaneTableView::moveItemClicked()
{
    if (isOnItem())
        post(MoveItem, selectedRows());
}

void PaneTableView::newFolderClicked()
{
    bus.post(NewFolder, { .side = _side });
}

void PaneTableView::deleteItemClicked()
{
    if (isOnItem())
        post(DeleteItem, selectedRows());
}

void PaneTableView::renameItemClicked()
{
    if (isOnItem())
        post(RenameItem, { selectedRow() });
}

void PaneTableView::showInfoClicked()
{
    if (isOnItem())
        post(ShowInfo, { selectedRow() });
}

void PaneTableView::selectRowBefore(const RowCount &answer)
{
    goToRow(answer.count - 1);
}

void PaneTableView::keyDown(QKeyEvent *event)
{
    if (isMenuKey(*event)) {
        if (event->key() == Qt::Key_F10) {
            QContextMenuEvent asked(QContextMenuEvent::Keyboard, {}, {});
            contextMenuEvent(&asked);
        }
        return;
    }
    const int code = VirtualKeys::code(*event);
    // Kept: letters come first, so that a command bound to a letter never runs.
    if (VirtualKeys::isTypeAheadKey(code)) {
        bus.post(LetterPressed, { .characters = event->text() });
        return;
    }
    if (const auto action = _classicKeys.match(code, VirtualKeys::modifierFlags(*event))) {
        perform(*action);
        return;
    }
    // With Shift, Home and End extend the selection as the arrows do, and Delete is a menu's key.
    const bool isAnother = event->modifiers() & Qt::ShiftModifier
        && (code == VirtualKeys::Home || code == VirtualKeys::End || code == VirtualKeys::Delete);
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    if (isAnother || !(performFixedKey(code) || (plain && performMarkKey(code))))
        handOn(event);
}

void PaneTableView::perform(ClassicAction action)
{
    switch (action) {
    case ClassicAction::Copy:
        return copyItemClicked();
    case ClassicAction::Move:
        return moveItemClicked();
    case ClassicAction::NewFolder:
        return newFolderClicked();
    case ClassicAction::Delete:
        return deleteItemClicked();
    case ClassicAction::Rename:
        return renameItemClicked();
    case ClassicAction::Exit:
        Q_EMIT terminateRequested();
    }
}

bool PaneTableView::performFixedKey(int keyCode)
{
    switch (keyCode) {
    case VirtualKeys::Escape:
        if (numberOfSelectedRows() == 0)
            Q_EMIT allRowsRequested();
        selectRows({});
        return true;
    case VirtualKeys::Space:
        bus.post(ShowFolderSize[_side], rowsOfPane(selectedRows()));
        return true;
    case VirtualKeys::Backspace:
    case VirtualKeys::LeftArrow:
        bus.post(GetRows[_side], rowsOfPane({ 0 }));
        return true;
    case VirtualKeys::Return:
    case VirtualKeys::KeypadEnter:
        bus.post(GetRows[_side], rowsOfPane(selectedRows()));
        return true;
    case VirtualKeys::RightArrow:
        bus.post(GotoNextDirectory[_side], rowsOfPane(selectedRows()));
        return true;
    case VirtualKeys::Home:
        goToRow(ParentRow);
        return true;
    case VirtualKeys::End:
        bus.post(GetRowCount[_side]);
        return true;
    case VirtualKeys::Delete:
        return performUnlessBound(keyCode, ClassicAction::Delete);
    case VirtualKeys::F2:
        return performUnlessBound(keyCode, ClassicAction::Rename);
    default:
        return false;
    }
}

bool PaneTableView::performUnlessBound(int keyCode, ClassicAction action)
{
    if (_classicKeys.isOfAnother(keyCode, action))
        return false;
    perform(action);
    return true;
}

bool PaneTableView::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        // The menu bar would take F10. Shortcuts with Ctrl or Alt stay the menus'.
        const auto *key = static_cast<QKeyEvent *>(event);
        const int code = VirtualKeys::code(*key);
        if (isMenuKey(*key)
            || (!(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))
                && !VirtualKeys::isTypeAheadKey(code)
                && _classicKeys.match(code, VirtualKeys::modifierFlags(*key)))) {
            event->accept();
            return true;
        }
    }
    if (event->type() == QEvent::Paint) {
        paintFrame();
        return true;
    }
    return QTableView::event(event);
}

void PaneTableView::mouseDoubleClickEvent(QMouseEvent *event)
{
    QTableView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && numberOfSelectedRows() > 0)
        bus.post(GetRows[_side], rowsOfPane(selectedRows()));
}

void PaneTableView::contextMenuEvent(QContextMenuEvent *event)
{
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    const int row = byMouse ? indexAt(event->pos()).row() : selectedRow();
    QPoint position = byMouse ? event->globalPos() : viewport()->mapToGlobal(QPoint());
    if (row < 0) {
        Q_EMIT folderMenuRequested(position);
        return;
    }
    // What is clicked is meant, unless it is one of several that are selected.
    if (!isRowSelected(row))
        selectRow(row);
    if (!byMouse) {
        scrollToRow(row);
        position = viewport()->mapToGlobal(
            visualRect(_tableModel->index(row, int(Column::Name))).bottomLeft());
    }
    Q_EMIT contextMenuRequested(position);
}

bool PaneTableView::focusNextPrevChild(bool)
{
    Q_EMIT otherPaneRequested();
    return true;
}

void PaneTableView::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        setUpRowHeight();
}

void PaneTableView::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    if (event->size().width() != event->oldSize().width())
        giveRoomToNames();
}

void PaneTableView::giveRoomToNames()
{
    // The names take what the other columns leave.
    const auto width = [this](Column column) { return columnWidth(int(column)); };
    const int room = viewport()->width() - width(Column::Icon);
    const int sizeAndDate = width(Column::Size) + width(Column::Date);
    int others = sizeAndDate + width(Column::Type);
    if (chosenWidths() == QList<int>(ColumnCount)) {
        // As long as nobody chose a width: of a kind its first word tells the most, and what has no
        // room beside the names stands whole beyond the edge, so that no text is cut there.
        const int letter = fontMetrics().horizontalAdvance(u'0');
        makeColumn(Column::Type,
                   std::clamp(room - sizeAndDate - NameLetters * letter, LeastTypeLetters * letter,
                              TypeLetters * letter));
        others = sizeAndDate + width(Column::Type);
        for (const auto column : { Column::Type, Column::Date, Column::Size })
            if (room - others < LeastNameWidth)
                others -= width(column);
    }
    horizontalHeader()->resizeSection(int(Column::Name), std::max(LeastNameWidth, room - others));
}

void PaneTableView::makeColumn(Column column, int width)
{
    horizontalHeader()->resizeSection(int(column), width);
    _madeWidths[size_t(column)] = width;
}

QList<int> PaneTableView::chosenWidths() const
{
    QList<int> widths(ColumnCount);
    for (const auto column : { Column::Size, Column::Date, Column::Type })
        if (const int width = columnWidth(int(column)); width != _madeWidths[size_t(column)])
            widths[int(column)] = width;
    return widths;
}

void PaneTableView::setColumnWidths(const QList<int> &widths)
{
    for (const auto column : { Column::Size, Column::Date, Column::Type })
        if (const int width = widths.value(int(column)); width > 0)
            horizontalHeader()->resizeSection(int(column), width);
    giveRoomToNames();
}

void PaneTableView::setDateFormat(const QString &format)
{
    _tableModel->setDateFormat(format);
    makeColumn(Column::Date,
               fontMetrics().horizontalAdvance(_tableModel->widestDate()) + 2 * CellMargin);
    giveRoomToNames();
}
