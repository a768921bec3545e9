#pragma once

#include "model/Messages.h"

#include <QObject>

#include <array>

class MainModel;
class PaneTableView;
class UserDefaults;

// The delegate of a pane's table: sorting by column clicks, tool tips, the select-all rule, and
// saving the sort state at termination.
class PaneDataSource : public QObject {
    Q_OBJECT

public:
    PaneDataSource(PaneTableView &fileList, MainModel &mainModel, MessageBus &bus,
                   UserDefaults &defaults);
    ~PaneDataSource() override;

    void awakeFromNib();

    void didClickTableColumn(Column column);
    // Plain text; empty for no tool tip.
    QString toolTipForCell(Column column, int row) const;
    void tableViewSelectionDidChange();

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    // What the info bar shows of this pane is to be shown anew.
    void selectionDidChange(Side side);

private:
    void selectionMayHaveChanged(const PaneOfMessage &pane);
    void applicationWillTerminate(const NoPayload &);

    PaneTableView &fileList;
    MainModel &mainModel;
    MessageBus &bus;
    UserDefaults &defaults;
    // The direction last used for each column; true is ascending.
    std::array<bool, ColumnCount> _sortingDirections {};
};
