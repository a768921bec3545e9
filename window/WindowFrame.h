#pragma once

#include "model/Side.h"

#include <QRect>

class MainWindowLayout;
class UserDefaults;

// Where the main window and its splitter stood last: before it is shown, what a person moves then
// stays. Main thread.
void restoreFrame(MainWindowLayout &window, const UserDefaults &defaults);
// The columns that a person made wider or narrower, when the others have their widths.
void restoreColumns(MainWindowLayout &window, const UserDefaults &defaults);
void saveFrame(const MainWindowLayout &window, Side active, UserDefaults &defaults);

// The pane that had the keyboard when the frame was saved; the left one otherwise.
Side lastActivePane(const UserDefaults &defaults);

// As near to the frame as has room on the screen.
QRect fittedTo(const QRect &screen, const QRect &frame);
