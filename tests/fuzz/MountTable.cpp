#include "files/MountTable.h"

#include "tests/fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    const auto table = MountTable::fromText(bytesOf(data, size));
    for (const Mount &mount : table.mounts()) {
        const Mount *top = table.mountOf(mount.point);
        require(top && top->point == mount.point, "a point lies on what is mounted there");
        const Mount *below = table.mountOf(mount.point + QStringLiteral("/x"));
        require(below && below->point.size() >= mount.point.size(), "and so does what is below");
    }
    return 0;
}
