#pragma once

#include "views/PaneTableView.h"

class TableViewLeft final : public PaneTableView {
    Q_OBJECT

public:
    TableViewLeft(MessageBus &messages, MainModel &mainModel, UserDefaults &defaults,
                  QWidget *parent = nullptr)
        : PaneTableView(Side::Left, messages, mainModel, defaults, parent)
    {
    }
};

class TableViewRight final : public PaneTableView {
    Q_OBJECT

public:
    TableViewRight(MessageBus &messages, MainModel &mainModel, UserDefaults &defaults,
                   QWidget *parent = nullptr)
        : PaneTableView(Side::Right, messages, mainModel, defaults, parent)
    {
    }

    // Sides differ: with nothing selected the right pane still asks, for row -1.
    void showInfoClicked() override
    {
        if (selectedRow() != ParentRow)
            post(ShowInfo, { selectedRow() });
    }
};
