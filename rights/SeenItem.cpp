#include "rights/SeenItem.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>

namespace {

// Of these the system's headers have no names.
constexpr unsigned long Configfs = 0x62656570;
constexpr unsigned long Fusectl = 0x65735543;

// Through these the kernel itself is steered: who owns a file there owns a part of the machine.
constexpr unsigned long OfTheKernel[] = {
    PROC_SUPER_MAGIC, SYSFS_MAGIC,    CGROUP_SUPER_MAGIC, CGROUP2_SUPER_MAGIC,
    DEBUGFS_MAGIC,    TRACEFS_MAGIC,  SECURITYFS_MAGIC,   SELINUX_MAGIC,
    BPF_FS_MAGIC,     EFIVARFS_MAGIC, PSTOREFS_MAGIC,     DEVPTS_SUPER_MAGIC,
    NSFS_MAGIC,       BINFMTFS_MAGIC, Configfs,           Fusectl,
};

bool isOfTheKernel(int item)
{
    struct statfs system;
    // What does not say where it lies is left alone, too.
    return fstatfs(item, &system) != 0
        || std::ranges::find(OfTheKernel, static_cast<unsigned long>(system.f_type))
        != std::end(OfTheKernel);
}

Descriptor walk(std::string path)
{
    Descriptor at(open("/", O_PATH | O_DIRECTORY | O_CLOEXEC));
    char *rest = nullptr;
    for (char *name = strtok_r(path.data(), "/", &rest); name && at.isOpen();) {
        char *next = strtok_r(nullptr, "/", &rest);
        const int folder = next ? O_DIRECTORY : 0; // which no link is
        at = Descriptor(openat(at.number(), name, O_PATH | O_NOFOLLOW | O_CLOEXEC | folder));
        name = next;
    }
    return at;
}

} // namespace

std::variant<SeenItem, Outcome> takeItem(const ItemName &name)
{
    SeenItem seen { walk(name.path) };
    if (!seen.item.isOpen() || fstat(seen.item.number(), &seen.status) != 0)
        return failure("no such item");
    if (seen.status.st_dev != name.device || seen.status.st_ino != name.inode)
        return Outcome { Status::Refused, "another item has come to the path" };
    // Who owns a disk's device owns all that is on it.
    if (S_ISBLK(seen.status.st_mode) || S_ISCHR(seen.status.st_mode))
        return Outcome { Status::Refused, "a device" };
    if (isOfTheKernel(seen.item.number()))
        return Outcome { Status::Refused, "it is the kernel's" };
    return seen;
}

std::string pathOf(const SeenItem &seen)
{
    return "/proc/self/fd/" + std::to_string(seen.item.number());
}

Outcome failure(const char *what)
{
    return { Status::Failed, std::string(what) + ": " + std::strerror(errno) };
}
