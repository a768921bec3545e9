// The longest time, in milliseconds, for which the window does not answer: its event loop is to
// turn every five, while a folder of a million entries opens, and while a server beside it never
// answers.

#include "bench/LargeFolder.h"
#include "bench/Measure.h"
#include "bench/Panes.h"
#include "files/Waiting.h"

#include <QApplication>
#include <QTimer>

#include <cerrno>
#include <cstring>
#include <sched.h>
#include <sys/mount.h>

namespace {

using namespace Qt::StringLiterals;

constexpr int Count = 1'000'000;
constexpr int Runs = 5;

void require(bool done, const char *what)
{
    if (done)
        return;
    std::fprintf(stderr, "%s: %s\n", what, std::strerror(errno));
    std::exit(1);
}

// A mount whose server takes no request: whoever asks it anything waits until it goes.
class DeadServer final {
public:
    explicit DeadServer(QByteArray point)
        : _point(std::move(point))
        , _server(open("/dev/fuse", O_RDWR | O_CLOEXEC))
    {
        require(_server >= 0, "/dev/fuse");
        require(mkdir(_point, 0755) == 0, "mkdir");
        const QByteArray options = "fd=" + QByteArray::number(_server) + ",rootmode=40000,user_id="
            + QByteArray::number(geteuid()) + ",group_id=" + QByteArray::number(getegid());
        require(mount("server", _point, "fuse", MS_NOSUID | MS_NODEV, options) == 0, "mount");
    }
    ~DeadServer()
    {
        umount2(_point, MNT_DETACH);
        close(_server);
    }
    DeadServer(const DeadServer &) = delete;
    DeadServer &operator=(const DeadServer &) = delete;

private:
    QByteArray _point;
    int _server;
};

// Mounts of its own, by root's rights or in a user namespace. Before there are threads.
void enterOwnMounts()
{
    const QByteArray user = QByteArray::number(geteuid());
    if (unshare(CLONE_NEWNS) != 0) {
        require(unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0, "unshare");
        FILE *map = std::fopen("/proc/self/uid_map", "w");
        require(map && std::fprintf(map, "%s %s 1", user.constData(), user.constData()) > 0
                    && std::fclose(map) == 0,
                "uid_map");
    }
    require(mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0, "mount");
}

double longestGap(const std::function<void()> &work)
{
    using Clock = std::chrono::steady_clock;
    auto last = Clock::now();
    double longest = 0;
    const auto turn = [&] {
        const auto now = Clock::now();
        longest = std::max(longest, std::chrono::duration<double, std::milli>(now - last).count());
        last = now;
    };
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.callOnTimeout(&timer, turn);
    timer.start(5);
    work();
    QCoreApplication::processEvents();
    turn();
    return longest;
}

// One that goes without an answer is no figure; which one it was helps to find out why.
void requireShown(const Panes &panes, const QString &folder, qsizetype rows, const char *what)
{
    const Listing &shown = panes.model.rowsLeft();
    if (shown.folder() == folder && shown.size() >= rows)
        return;
    std::fprintf(stderr, "%s: shown are %lld rows of %s\n", what, qlonglong(shown.size()),
                 qUtf8Printable(shown.folder()));
    std::_Exit(1); // threads may still stand at a server
}

void report(const char *name, const std::function<void()> &work)
{
    std::vector<double> gaps;
    for (int run = 0; run < Runs; ++run)
        gaps.push_back(longestGap(work));
    char detail[120];
    std::snprintf(detail, sizeof detail, "ms at most, median of %d runs, longest %.0f", Runs,
                  std::ranges::max(gaps));
    Measure::print(name, Measure::median(gaps), detail);
}

} // namespace

int main(int argc, char **argv)
{
    enterOwnMounts();
    const OwnHome home;
    const QApplication application(argc, argv);
    const QString folder = home.path(u"folder"_s);
    const QString small = home.path(u"small"_s);
    fillFolder(folder.toUtf8(), Count, [](int) { return std::string(); });
    mkdir(small.toUtf8(), 0755);

    {
        Panes panes(home);
        const auto openBoth = [&] {
            panes.open(small);
            requireShown(panes, small, 1, "the empty folder was given up");
            panes.open(folder);
            requireShown(panes, folder, Count + 1, "the large folder was given up");
            panes.paint();
        };
        report("freeze-1m", openBoth);
        const DeadServer server(home.bytes(u"folder/server"_s));
        require(symlink("server", home.bytes(u"folder/to server"_s)) == 0, "symlink");
        report("freeze-dead", [&] {
            openBoth();
            panes.model.showFolder(Side::Left, { home.path(u"folder/server"_s) });
            requireShown(panes, folder, Count + 1, "the dead server answered");
        });
    }
    std::_Exit(0); // threads may still stand at the server
}
