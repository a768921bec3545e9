#pragma once

#include <linux/magic.h>
#include <sys/syscall.h>
#include <sys/vfs.h>
#include <unistd.h>

// While it is set every file system looks like FAT, where inode numbers are made up. For the one
// source file of a test.
static bool onFat = false;

int fstatfs(int file, struct statfs *status) noexcept
{
    const int answer = int(syscall(SYS_fstatfs, file, status));
    if (onFat)
        status->f_type = MSDOS_SUPER_MAGIC;
    return answer;
}
