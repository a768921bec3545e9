// From the message that a folder is to be shown to its rows on the screen, against reading the
// names and attributes and keeping nothing.

#include "bench/LargeFolder.h"
#include "bench/Measure.h"
#include "bench/Panes.h"

#include <QApplication>

#include <sys/syscall.h>

namespace {

using namespace Qt::StringLiterals;

void bareLoop(const QByteArray &folder)
{
    const int descriptor = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    std::vector<char> buffer(256 * 1024);
    long size = 0;
    while ((size = syscall(SYS_getdents64, descriptor, buffer.data(), buffer.size())) > 0) {
        for (long at = 0; at < size;) {
            unsigned short length = 0;
            std::copy_n(buffer.data() + at + 16, sizeof length, reinterpret_cast<char *>(&length));
            struct statx status { };
            statx(descriptor, buffer.data() + at + 19, AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS,
                  &status);
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

} // namespace

int main(int argc, char **argv)
{
    const OwnHome home;
    const QApplication application(argc, argv);
    const bool million = argc > 1 && qstrcmp(argv[1], "--million") == 0;
    const int count = million ? 1'000'000 : 100'000;
    const QString folder = home.path(u"folder"_s);
    fillFolder(folder.toUtf8(), count, [](int) { return std::string(); });

    Panes panes(home);
    const qint64 before = residentBytes();
    const auto show = [&] {
        panes.open(folder);
        panes.paint();
    };
    show();
    if (panes.model.rowsLeft().size() != count + 1)
        return 1;
    Measure::report(million ? "list-1m" : "list-100k", million ? 5 : 15,
                    { .work = show, .floor = [path = folder.toUtf8()] { bareLoop(path); } },
                    ", " + std::to_string((residentBytes() - before) / count)
                        + " bytes of memory per row");
    return 0;
}
