#pragma once

#include <QString>

// Where a pane has to go for a path that somebody outside the window named.
struct PathPlace {
    QString folder {}; // "" when the path cannot be shown
    QString selected {}; // the name of an item in it; "" for none
    QString complaint {}; // why it cannot be shown, for a person
};

// Of a file it is the folder that it lies in. Asks the disk. Any thread.
PathPlace placeOf(const QString &path);
