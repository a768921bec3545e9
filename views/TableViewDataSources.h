#pragma once

#include "views/PaneDataSource.h"
#include "views/TableViews.h"

class TableViewDataSourceLeft final : public PaneDataSource {
    Q_OBJECT

public:
    TableViewDataSourceLeft(TableViewLeft &leftFileList, MainModel &model, MessageBus &messages,
                            UserDefaults &settings)
        : PaneDataSource(leftFileList, model, messages, settings)
    {
    }
};

class TableViewDataSourceRight final : public PaneDataSource {
    Q_OBJECT

public:
    TableViewDataSourceRight(TableViewRight &rightFileList, MainModel &model, MessageBus &messages,
                             UserDefaults &settings)
        : PaneDataSource(rightFileList, model, messages, settings)
    {
    }
};
