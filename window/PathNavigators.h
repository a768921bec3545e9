#pragma once

#include "model/Messages.h"
#include "widgets/SegmentedControl.h"

#include <QObject>

class FileQueries;
class MainModel;
class UserDefaults;

// The path navigators over the panes. They follow the folder-changed messages and remember how deep
// each pane has been.
class PathNavigators final : public QObject {
    Q_OBJECT

public:
    PathNavigators(SegmentedControl &left, SegmentedControl &right, MessageBus &bus,
                   const MainModel &mainModel, const FileQueries &queries,
                   const UserDefaults &defaults);
    ~PathNavigators() override;

    void setupPathNavigators();
    void setToolTips(); // on or off, as the model has it now
    void setPathNavigator(Side side, const FolderChange &change);
    void pathNavigatorClicked(Side side);

    // The longest path whose components the segments still show.
    QString completeNavigatorPath(Side side) const { return _completeNavigatorPath[side]; }
    // The path up to the selected segment: what is remembered for the next start.
    QString getCurrentNavigatorPath(Side side) const;
    int getSelectedSegmentFromSegmentedControl(Side side) const;
    bool isItemInNavigatorPath(const QString &item, Side side) const;

    SegmentedControl &control(Side side) const
    {
        return side == Side::Left ? leftSegmentedControl : rightSegmentedControl;
    }

private:
    SegmentedControl &leftSegmentedControl;
    SegmentedControl &rightSegmentedControl;
    MessageBus &bus;
    const MainModel &mainModel;
    const FileQueries &queries;
    const UserDefaults &defaults;
    PerSide<QString> _completeNavigatorPath;
};
