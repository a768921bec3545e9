#pragma once

#include <QByteArray>

#include <dirent.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstring>
#include <vector>

// Reads the names of everything below a folder and nothing else: the least that a search without an
// index has to do. How many there are.
inline long bareNames(const QByteArray &top)
{
    constexpr size_t BufferSize = 65536;
    std::vector<char> buffer(BufferSize);
    std::vector<QByteArray> folders { top };
    long names = 0;
    while (!folders.empty()) {
        const QByteArray path = std::move(folders.back());
        folders.pop_back();
        const int folder = open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW);
        if (folder < 0)
            continue;
        for (long filled = 0;
             (filled = syscall(SYS_getdents64, folder, buffer.data(), BufferSize)) > 0;) {
            for (long at = 0; at < filled;) {
                const auto *item = reinterpret_cast<const dirent64 *>(buffer.data() + at);
                at += item->d_reclen;
                if (std::strcmp(item->d_name, ".") == 0 || std::strcmp(item->d_name, "..") == 0)
                    continue;
                ++names;
                if (item->d_type == DT_DIR)
                    folders.push_back(path + '/' + item->d_name);
            }
        }
        close(folder);
    }
    return names;
}
