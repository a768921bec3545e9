#include "reader/PathFilter.h"

#include "files/Descriptor.h"

#include <cstddef>
#include <cstdint>
#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/syscall.h>

namespace {

// As newer kernels have it; an older one is told of its beginning only.
struct Rules {
    uint64_t files;
    uint64_t network;
    uint64_t scope;
};

constexpr uint64_t AllOfFirst = (1U << 13) - 1;
constexpr uint64_t Refer = 1U << 13; // since 2
constexpr uint64_t Truncate = 1U << 14; // since 3
constexpr uint64_t Devices = 1U << 15; // since 5
constexpr uint64_t BindAndConnect = 3; // since 4
constexpr uint64_t SocketsAndSignals = 3; // since 6

constexpr const char *Readable[] = {
    "/etc/fonts",         "/usr/local/share/fonts", "/usr/share/fontconfig", "/usr/share/fonts",
    "/usr/share/poppler", "/usr/share/zoneinfo",    "/var/cache/fontconfig",
};

} // namespace

bool closePaths()
{
    const long version =
        syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1)
        return false;
    Rules rules { AllOfFirst, 0, 0 };
    size_t size = offsetof(Rules, network);
    if (version >= 2)
        rules.files |= Refer;
    if (version >= 3)
        rules.files |= Truncate;
    if (version >= 4) {
        rules.network = BindAndConnect;
        size = offsetof(Rules, scope);
    }
    if (version >= 5)
        rules.files |= Devices;
    if (version >= 6) {
        rules.scope = SocketsAndSignals;
        size = sizeof rules;
    }
    const Descriptor set(int(syscall(SYS_landlock_create_ruleset, &rules, size, 0)));
    if (!set.isOpen())
        return false;
    for (const char *path : Readable) {
        const Descriptor folder(open(path, O_PATH | O_CLOEXEC));
        landlock_path_beneath_attr rule {};
        rule.allowed_access = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
        rule.parent_fd = folder.number();
        // What is not there stays closed.
        syscall(SYS_landlock_add_rule, set.number(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
    }
    return syscall(SYS_landlock_restrict_self, set.number(), 0) == 0;
}
