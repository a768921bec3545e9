// From exec to the first paint of the window, against the least program with an empty table. Both
// run unchanged, with a library that ends them as soon as their first paint is on the screen. And
// the start with the toolbar shown against the same with it hidden.
// Usage: bench_start PROGRAM PEER LIBRARY

#include "bench/LargeFolder.h"
#include "bench/Measure.h"
#include "bench/OwnHome.h"
#include "settings/BundleInfo.h"
#include "settings/UserDefaults.h"
#include "window/ToolbarSettings.h"

#include <QCoreApplication>

#include <spawn.h>
#include <sys/wait.h>

namespace {

using namespace Qt::StringLiterals;

constexpr int Runs = 25;
constexpr int Files = 40; // more than a screenful
constexpr int Painted = 77; // the exit status of a program that came to its first paint

void run(const char *program, const char *folder)
{
    const char *const arguments[] = { program, folder, nullptr };
    pid_t process = 0;
    int status = 1;
    if (posix_spawn(&process, program, nullptr, nullptr, const_cast<char *const *>(arguments),
                    environ)
        == 0)
        waitpid(process, &status, 0);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != Painted) {
        std::fprintf(stderr, "%s did not come to paint\n", program);
        std::exit(1);
    }
}

void showToolbar(bool shown)
{
    UserDefaults defaults(BundleInfo::getBundleIdentifier());
    ToolbarSettings(defaults).setShown(shown);
    defaults.synchronize();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 4) {
        std::fputs("Usage: bench_start PROGRAM PEER LIBRARY\n", stderr);
        return 2;
    }
    const OwnHome home;
    const QCoreApplication application(argc, argv);
    const QByteArray folder = home.bytes(u"folder"_s);
    fillFolder(folder, Files, [](int) { return std::string("x"); });
    qputenv("LD_PRELOAD", argv[3]);
    Measure::report("start", Runs,
                    { .work = [&] { run(argv[1], folder.constData()); },
                      .floor = [&] { run(argv[2], folder.constData()); } });
    const auto start = [&] { run(argv[1], folder.constData()); };
    Measure::report("start-toolbar", 2 * Runs,
                    { .work = start,
                      .floor = start,
                      .before = [] { showToolbar(true); },
                      .beforeFloor = [] { showToolbar(false); } });
    return 0;
}
