#pragma once

class Commands;
class QWidget;
class Twinleaf;

// Gives the command to undo what it does; its menu item says from then on what would be undone. The
// letters are the window's. Main thread.
void offerUndo(Commands &commands, Twinleaf &twinleaf, const QWidget &window);
