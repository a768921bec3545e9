#pragma once

#include "files/FileStatus.h"

// What the Trash says of an item: the place to which the desktop's "Restore" brings it back. Any
// thread.
namespace TrashRecord {

// Writes another place into the record of an item that has just been moved to the Trash by this
// path. False when the item is in none of the Trashes that it can be in.
bool setOrigin(const FileIdentity &item, const QString &path, const QString &origin);

} // namespace TrashRecord
