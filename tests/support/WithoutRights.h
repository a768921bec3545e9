#pragma once

#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

// Root's rights to read and write what is closed, given up for a scope: what is closed to its owner
// is closed to root too. Counts for this thread, and those that it starts meanwhile.
class WithoutRights {
public:
    WithoutRights()
    {
        syscall(SYS_capget, &_header, _rights);
        __user_cap_data_struct fewer[] = { _rights[0], _rights[1] };
        fewer[0].effective &= ~(1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH);
        syscall(SYS_capset, &_header, fewer);
    }
    ~WithoutRights() { syscall(SYS_capset, &_header, _rights); }
    WithoutRights(const WithoutRights &) = delete;
    WithoutRights &operator=(const WithoutRights &) = delete;

private:
    __user_cap_header_struct _header { _LINUX_CAPABILITY_VERSION_3, 0 };
    __user_cap_data_struct _rights[2] {};
};

// The same for good. Answers whether the programs that are started have lost them, too; who is not
// root has none to lose.
inline bool giveUpRights()
{
    static const WithoutRights never;
    return prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE, 0, 0, 0) == 0
        && prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH, 0, 0, 0) == 0;
}
