// From the first of 1,000 files that another process makes in a folder of 100,000 to the last of
// them on the screen, against making and looking at them; and the longest time, in milliseconds,
// for which the window does not answer meanwhile.

#include "bench/LargeFolder.h"
#include "bench/Measure.h"
#include "bench/Panes.h"

#include <QApplication>
#include <QTimer>

#include <sys/wait.h>

namespace {

using namespace Qt::StringLiterals;

constexpr int Count = 100'000;
constexpr int New = 1'000;
constexpr int Runs = 9;

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// New names each time, and none is removed: ext4 looks long for an inode where many went just now.
void makeNew(const QByteArray &folder, int first)
{
    const int descriptor = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int number = first; number < first + New; ++number) {
        char name[64];
        std::snprintf(name, sizeof name, "new %08x.txt", unsigned(number) * 2654435761U);
        close(openat(descriptor, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
        struct statx status { };
        statx(descriptor, name, AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS, &status);
    }
    close(descriptor);
}

// Another process that waits for a word, makes the files and ends.
class Maker final {
public:
    Maker(const QByteArray &folder, int first)
    {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0)
            std::exit(1);
        _word = ends[1];
        _process = fork();
        if (_process == 0) {
            char word = 0;
            close(ends[1]);
            if (read(ends[0], &word, 1) == 1)
                makeNew(folder, first);
            _exit(0);
        }
        close(ends[0]);
    }
    void begin() const
    {
        if (write(_word, "x", 1) != 1)
            std::exit(1);
    }
    void end() // waits for it
    {
        if (const pid_t process = std::exchange(_process, -1); process > 0)
            waitpid(process, nullptr, 0);
    }
    ~Maker()
    {
        close(_word);
        end();
    }
    Maker(const Maker &) = delete;
    Maker &operator=(const Maker &) = delete;

private:
    int _word = -1;
    pid_t _process = -1;
};

// Turns the event loop until the pane shows so many rows and has painted them; answers the longest
// turn.
double turnUntil(const Panes &panes, qsizetype rows)
{
    double longest = 0;
    auto last = Clock::now();
    QTimer turns; // so that a turn ends when nothing happens
    turns.setTimerType(Qt::PreciseTimer);
    turns.start(1);
    for (const auto start = last; panes.model.rowsLeft().size() != rows;) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        longest = std::max(longest, millisecondsSince(last));
        last = Clock::now();
        if (millisecondsSince(start) > 30'000) {
            std::fprintf(stderr, "only %lld rows came\n", qlonglong(panes.model.rowsLeft().size()));
            std::_Exit(1);
        }
    }
    panes.left.viewport()->repaint();
    return std::max(longest, millisecondsSince(last));
}

} // namespace

int main(int argc, char **argv)
{
    const OwnHome home;
    const QApplication application(argc, argv);
    const QString folder = home.path(u"folder"_s);
    const QString aside = home.path(u"aside"_s);
    const QByteArray path = folder.toUtf8();
    mkdir(aside.toUtf8().constData(), 0755);
    fillFolder(path, Count, [](int) { return std::string(); });

    Panes panes(home);
    panes.open(folder);
    turnUntil(panes, Count + 1);
    std::vector<double> works;
    std::vector<double> floors;
    std::vector<double> freezes;
    int made = 0;
    for (int run = 0; run < Runs; ++run) {
        {
            const Maker maker(path, made);
            const auto start = Clock::now();
            maker.begin();
            made += New;
            freezes.push_back(turnUntil(panes, Count + made + 1));
            works.push_back(millisecondsSince(start));
        }
        // In a folder that nobody watches.
        panes.open(aside);
        {
            Maker maker(path, made);
            floors.push_back(Measure::milliseconds([&] {
                maker.begin();
                maker.end();
            }));
        }
        made += New;
        panes.open(folder);
        turnUntil(panes, Count + made + 1);
    }
    char detail[160];
    std::snprintf(detail, sizeof detail,
                  "%.1f ms against %.1f ms, fastest %.1f against %.1f, %d runs",
                  Measure::median(works), Measure::median(floors), std::ranges::min(works),
                  std::ranges::min(floors), Runs);
    Measure::print("watch-1000", Measure::median(works) / Measure::median(floors), detail);
    std::snprintf(detail, sizeof detail, "ms at most, median of %d runs, longest %.1f", Runs,
                  std::ranges::max(freezes));
    Measure::print("watch-freeze", Measure::median(freezes), detail);
    return 0;
}
