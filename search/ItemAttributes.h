#pragma once

#include "platform/MetadataIndex.h"

// All that is known of an item: what its file system says, then what was read in it, if it is still
// the one that was read. Empty when there is no such item. Waits for the disk; any thread.
QList<MetadataAttribute> itemAttributes(const QString &path, const QString &index);
