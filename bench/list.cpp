// How long reading and sorting a large folder take, against the least that any program has to do.

#include "model/Listing.h"
#include "platform/FileKinds.h"

#include <QApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace {

using namespace Qt::StringLiterals;

constexpr int Runs = 5;

double milliseconds(const std::function<void()> &work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

// The two take turns, so that a busy moment of the machine hits both; the middle of each counts.
void report(const char *name, const std::function<void()> &work, const std::function<void()> &floor)
{
    std::vector<double> works;
    std::vector<double> floors;
    for (int run = 0; run < Runs; ++run) {
        floors.push_back(milliseconds(floor));
        works.push_back(milliseconds(work));
    }
    std::sort(works.begin(), works.end());
    std::sort(floors.begin(), floors.end());
    const double middle = works[Runs / 2];
    const double least = floors[Runs / 2];
    std::printf("%s %.2f %.1f ms against %.1f ms, %d runs\n", name, middle / least, middle, least,
                Runs);
    std::fflush(stdout);
}

bool fillFolder(const char *folder, int count)
{
    const int descriptor = open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    bool good = descriptor >= 0;
    for (int number = 0; good && number < count; ++number) {
        char name[64];
        // Scattered, as a sort must not find them in order.
        std::snprintf(name, sizeof name, "item %08x.%s",
                      static_cast<unsigned>(number) * 2654435761U, number % 3 ? "txt" : "png");
        const int file = openat(descriptor, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
        good = file >= 0 && ftruncate(file, number % 100000) == 0;
        close(file);
    }
    close(descriptor);
    return good;
}

// Names and attributes of everything in the folder, kept nowhere.
void bareLoop(const char *folder)
{
    const int descriptor = open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    std::vector<char> buffer(256 * 1024);
    long size = 0;
    while ((size = syscall(SYS_getdents64, descriptor, buffer.data(), buffer.size())) > 0) {
        for (long at = 0; at < size;) {
            unsigned short length = 0;
            std::copy_n(buffer.data() + at + 16, sizeof length, reinterpret_cast<char *>(&length));
            struct statx status { };
            statx(descriptor, buffer.data() + at + 19, AT_SYMLINK_NOFOLLOW,
                  STATX_BASIC_STATS | STATX_BTIME, &status);
            at += length;
        }
    }
    close(descriptor);
}

qint64 residentBytes()
{
    long pages = 0;
    if (FILE *file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%*d %ld", &pages) != 1)
            pages = 0;
        std::fclose(file);
    }
    return pages * sysconf(_SC_PAGESIZE);
}

template <typename Key>
void reportSort(const char *name, const Listing &listing, Column column,
                const std::function<Key(const Entry &)> &keyOf)
{
    std::vector<Key> keys;
    keys.reserve(static_cast<size_t>(listing.size()));
    for (qsizetype row = 0; row < listing.size(); ++row)
        keys.push_back(keyOf(listing.at(row)));
    report(
        name, [&] { listing.sorted(column, SortDirection::Ascending); },
        [keys] {
            auto bare = keys;
            std::sort(bare.begin(), bare.end());
        });
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const bool million = argc > 1 && qstrcmp(argv[1], "--million") == 0;
    const int count = million ? 1000000 : 100000;

    const QTemporaryDir folder;
    const QByteArray path = folder.path().toUtf8();
    if (!folder.isValid() || !fillFolder(path.constData(), count)) {
        std::fputs("the folder could not be filled\n", stderr);
        return 1;
    }
    const FileKinds kinds;
    Listing listing;
    const qint64 before = residentBytes();
    listing = Listing::read(folder.path(), {}, kinds);
    std::printf("# %lld bytes of memory per row\n", (residentBytes() - before) / listing.size());
    report(
        million ? "read-1m" : "read-100k", [&] { Listing::read(folder.path(), {}, kinds); },
        [&] { bareLoop(path.constData()); });
    if (!million) {
        reportSort<QString>("sort-100k-name", listing, Column::Name,
                            [](const Entry &entry) { return entry.name(); });
    }
    return 0;
}
