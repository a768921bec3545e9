#pragma once

class QString;

// Media that a person pulls out, and servers: what is finished there must be written. Waits until
// it is. Any thread.
void syncIfRemovable(const QString &folder);
