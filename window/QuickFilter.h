#pragma once

#include "model/Side.h"

#include <QObject>

class MainModel;
class MainWindowLayout;

// The filter of each pane as the person meets it: its line comes up when it is asked for, narrows
// the rows with each key, and goes by Escape or with the folder. Main thread.
class QuickFilter final : public QObject {
    Q_OBJECT

public:
    QuickFilter(MainWindowLayout &mainWindow, MainModel &mainModel);

    void show(Side side); // and gives it the keyboard
    void end(Side side); // all rows are there again

private:
    void follow(Side side);

    MainWindowLayout &mainWindow;
    MainModel &mainModel;
    PerSide<QString> _folders; // for which the lines are there
};
