#pragma once

#include <QString>

// The Trash of the desktop. Any thread.
namespace Trash {

// Why the item cannot go to the Trash, as a sentence for a person; "" when nothing speaks against
// it. Refused are "/", the home folder, mount points, the folders of the Trash, any folder that
// holds one of these, what lies in the Trash already, names too long for the Trash's own record,
// and what lies where there is no Trash or no right to move it.
QString refusal(const QString &path);

// Moves one item; links are moved themselves. Never removes for good. `reason` gets why it failed.
// `origin`: where "Restore" is to bring it back, when that is not where it lies now.
bool moveItem(const QString &path, QString *reason = nullptr, const QString &origin = {});

} // namespace Trash
