#include "files/VolumeSpace.h"

#include "files/FileName.h"

#include <algorithm>
#include <sys/statvfs.h>

std::optional<VolumeSpace> volumeSpace(const QString &folder)
{
    struct statvfs volume;
    if (::statvfs(FileName::toBytes(folder).constData(), &volume) != 0 || volume.f_blocks == 0)
        return std::nullopt;
    const quint64 unit = volume.f_frsize;
    return VolumeSpace { .available = std::min(volume.f_bavail, volume.f_blocks) * unit,
                         .total = volume.f_blocks * unit,
                         .isReadOnly = (volume.f_flag & ST_RDONLY) != 0 };
}
