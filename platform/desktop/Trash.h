#pragma once

#include <QString>

// Moves one item to the Trash of the desktop; links are moved themselves. Refuses "/", the home
// folder, mount points, the folders of the Trash, and any folder that holds one of these. Never
// removes for good. Any thread.
bool moveItemToTrash(const QString &path);
