#pragma once

#include <QRect>

class MainWindowLayout;
class UserDefaults;

// Where the main window, its splitter and its columns stood last. Main thread.
void restoreFrame(MainWindowLayout &window, const UserDefaults &defaults);
void saveFrame(const MainWindowLayout &window, UserDefaults &defaults);

// As near to the frame as has room on the screen.
QRect fittedTo(const QRect &screen, const QRect &frame);
