#pragma once

#include <QByteArray>

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

// Makes the folder and files of `size(number)` bytes in it. The names are scattered, as a sort must
// not find them in order. Ends the program when it cannot.
template <typename Size>
void fillFolder(const QByteArray &folder, int count, Size size, const char *prefix = "item ")
{
    mkdir(folder.constData(), 0755);
    const int descriptor = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    bool good = descriptor >= 0;
    for (int number = 0; good && number < count; ++number) {
        char name[64];
        std::snprintf(name, sizeof name, "%s%08x.%s", prefix,
                      static_cast<unsigned>(number) * 2654435761U, number % 3 ? "txt" : "png");
        const int file = openat(descriptor, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
        const std::string bytes = size(number);
        good = file >= 0 && write(file, bytes.data(), bytes.size()) == ssize_t(bytes.size());
        close(file);
    }
    close(descriptor);
    if (!good) {
        std::fprintf(stderr, "%s could not be filled\n", folder.constData());
        std::exit(1);
    }
}

// A small file's content, the same for each.
inline std::string smallContent(int)
{
    return std::string(4096, 'x');
}

// Makes the folder with folders of a hundred small files each.
inline void makeTree(const QByteArray &tree, int folders)
{
    mkdir(tree.constData(), 0755);
    for (int number = 0; number < folders; ++number)
        fillFolder(tree + "/folder " + QByteArray::number(number), 100, smallContent);
}
