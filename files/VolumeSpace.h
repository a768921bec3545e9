#pragma once

#include <QString>

#include <optional>

// How much room there is on a volume, in bytes.
struct VolumeSpace {
    quint64 available = 0; // to this person
    quint64 total = 0;
    bool isReadOnly = false;
};

// Of the volume that a folder lies on; nothing where that has no size, or does not say. Asks the
// disk. Any thread.
std::optional<VolumeSpace> volumeSpace(const QString &folder);
