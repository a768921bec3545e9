#include "views/PaneDataSource.h"

#include "files/FileName.h"
#include "model/MainModel.h"
#include "model/PaneSettings.h"
#include "settings/CalendarFormat.h"
#include "settings/UserDefaults.h"
#include "views/PaneTableView.h"
#include "widgets/MenuText.h"

#include <QHelpEvent>
#include <QToolTip>

using namespace Qt::StringLiterals;

PaneDataSource::PaneDataSource(PaneTableView &table, MainModel &model, MessageBus &messages,
                               UserDefaults &settings)
    : fileList(table)
    , mainModel(model)
    , bus(messages)
    , defaults(settings)
{
    connect(&fileList, &PaneTableView::columnClicked, this, &PaneDataSource::didClickTableColumn);
    connect(&fileList, &PaneTableView::selectedRowsChanged, this,
            &PaneDataSource::tableViewSelectionDidChange);
    fileList.viewport()->installEventFilter(this);
    bus.subscribe(TableViewSelectionDidChange, this, &PaneDataSource::selectionMayHaveChanged);
    bus.subscribe(ApplicationWillTerminate, this, &PaneDataSource::applicationWillTerminate);
}

PaneDataSource::~PaneDataSource()
{
    bus.unsubscribe(this);
}

void PaneDataSource::awakeFromNib()
{
    const SortOrder order = storedSortOrder(defaults, fileList.side());
    _sortingDirections[size_t(order.column)] = order.direction == SortDirection::Ascending;
}

void PaneDataSource::didClickTableColumn(Column column)
{
    if (column == Column::Icon)
        return;
    // Kept: the flag is turned first, so the first click on a column sorts against its stored
    // direction, and on a column never sorted by it sorts upwards.
    bool &ascending = _sortingDirections[size_t(column)];
    ascending = !ascending;

    // The same items stay selected, wherever their rows go.
    const Side side = fileList.side();
    const Listing before = mainModel.rows(side);
    ShownRows shown = fileList.shownRows();
    mainModel.sortRowEntries(column, side,
                             ascending ? SortDirection::Ascending : SortDirection::Descending);
    shown = mainModel.rowsNow(shown, before, mainModel.rows(side));
    shown.first = NoRow; // the view stays where it is unless the keyboard's row leaves it
    fileList.showRows(shown);
    fileList.scrollToRow(shown.current);
}

QString PaneDataSource::toolTipForCell(Column column, int row) const
{
    const Listing &rows = mainModel.rows(fileList.side());
    if (!mainModel.showToolTips() || !rows.holds(row))
        return {};
    switch (column) {
    case Column::Name:
        return FileName::shown(rows[row].name());
    case Column::Size:
        return rows[row].size();
    case Column::Date:
        // Kept: the plain description, whatever format the column shows.
        return CalendarFormat::description(rows[row].date());
    case Column::Type:
        return rows[row].type();
    case Column::Icon:
        break;
    }
    return {};
}

void PaneDataSource::tableViewSelectionDidChange()
{
    if (fileList.numberOfSelectedRows() > 1 && fileList.isRowSelected(ParentRow)) {
        // ".." has no part in a selection of several. The change this makes comes back here.
        fileList.deselectRow(ParentRow);
        return;
    }
    Q_EMIT selectionDidChange(fileList.side());
}

void PaneDataSource::selectionMayHaveChanged(const PaneOfMessage &pane)
{
    if (pane.side == fileList.side())
        tableViewSelectionDidChange();
}

void PaneDataSource::applicationWillTerminate(const NoPayload &)
{
    const auto column = fileList.highlightedColumn();
    if (!column)
        return;
    defaults.setValue(paneSettings(fileList.side()).sortedColumn, columnIdentifier(*column));
    defaults.setValue(paneSettings(fileList.side()).sortingDirection,
                      _sortingDirections[size_t(*column)]);
}

bool PaneDataSource::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QObject::eventFilter(watched, event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const QModelIndex cell = fileList.indexAt(help->pos());
    const QString text =
        toolTipForCell(static_cast<Column>(std::max(cell.column(), 0)), cell.row());
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), plainToolTip(text), fileList.viewport(),
                           fileList.visualRect(cell));
    return true;
}
