#pragma once

#include <optional>

class QString;
struct Alert;

// Media that a person pulls out, and servers: what is finished there must be written. Waits until
// it is; else answers what to tell the person. Any thread.
[[nodiscard]] std::optional<Alert> syncIfRemovable(const QString &folder);
