#pragma once

#include "platform/MetadataIndex.h"

// What a person wrote on an item, in the way of the desktops: its tags (user.xdg.tags) and a
// comment (user.xdg.comment). Links have none. Any thread.
QList<MetadataAttribute> userAttributes(const QByteArray &path);
