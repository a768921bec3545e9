#pragma once

#include "model/Side.h"
#include "window/FolderStatus.h"
#include "window/InfoBars.h"
#include "window/UnifiedWindow.h"

#include <QMap>

class ActivitySpinner;
class ClassicButton;
class FilterBar;
class MainModel;
class MenuTextButton;
class MessageBus;
class NoticeLabel;
class PaneTableView;
class QSplitter;
class QToolBar;
class SegmentedControl;
class TableViewLeft;
class TableViewRight;
class UserDefaults;
enum class Command;

// The main window: its controls and where they stand, without behaviour.
class MainWindowLayout final : public UnifiedWindow {
    Q_OBJECT

public:
    MainWindowLayout(MessageBus &bus, MainModel &mainModel, UserDefaults &defaults);

    PaneTableView &fileList(Side side) const;
    // A bar over the panes, in the place of the one before; null for none.
    void attachToolBar(QToolBar *bar);

    TableViewLeft *leftFileList;
    TableViewRight *rightFileList;
    PerSide<SegmentedControl *> segmentedControls;
    PerSide<FilterBar *> filterBars; // below the lists, out of sight without a filter
    PerSide<InfoBarFields> infoBars;
    PerSide<FolderStatusFields> folderStatus; // below them
    QSplitter *splitView;
    QMap<Command, ClassicButton *> buttons; // in the row
    QWidget *classicButtons; // the row that holds the buttons
    MenuTextButton *runsButton; // what runs, beside the spinner
    QWidget *runsRoom; // for its texts, out of sight while nothing runs
    ActivitySpinner *progressIndicator;
    NoticeLabel *notice; // a line over the panes

private:
    QWidget *pane(Side side);
    QWidget *infoBar(Side side);
    QWidget *statusLine(Side side);
    QWidget *buttonRow();
    QWidget *corner();

    QToolBar *_toolBar = nullptr;
    QSize _leastSize; // without a bar
};
