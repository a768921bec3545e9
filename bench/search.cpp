// Searching a home folder of 200,000 files for a word that 200 of them have, in the sheet and with
// everything that a query folds switched on: with the index warm, and with none. Usage:
// bench_search BUILD-FOLDER
//
// search-first and search-blocks are milliseconds; the others are measured against a bare walk by
// names over the same tree, those of other programs too.

#include "bench/BareNames.h"
#include "bench/Measure.h"
#include "bench/OwnHome.h"
#include "bench/Panes.h"
#include "bench/RunProgram.h"
#include "bench/SearchTree.h"
#include "search/IndexerProcess.h"
#include "search/IndexReader.h"
#include "sheets/search/SearchResultTable.h"
#include "sheets/search/SpotlightSearchSheet.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLineEdit>
#include <QTimer>

namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr int Runs = 9;

[[noreturn]] void fail(const char *what, qlonglong number)
{
    std::fprintf(stderr, "%s: %lld\n", what, number);
    std::exit(1);
}

// What a search took, in milliseconds from Return.
struct Times {
    double first = 0; // until rows were painted
    double all = 0; // until the last ones were there, and painted
    double longestGap = 0; // of the event loop meanwhile
};

// Looks on as the sheet shows what it finds.
class Search final : public QObject {
public:
    explicit Search(SpotlightSearchSheet &open)
        : _sheet(open)
    {
        _table.viewport()->installEventFilter(this);
        _timer.setTimerType(Qt::PreciseTimer);
        _timer.callOnTimeout(this, [this] { turn(); });
        _timer.start(5);
        // One that does not find them all is no figure.
        _patience.callOnTimeout(this, [this] { fail("Found", rows()); });
    }

    Times run(const QString &text, int expected)
    {
        _sheet.searchField->setText(text);
        QCoreApplication::processEvents();
        _expected = expected;
        _times = {};
        _lastTurn = 0;
        _time.start();
        Q_EMIT _sheet.searchAsked();
        _patience.start(1min);
        _loop.exec();
        _patience.stop();
        turn();
        return _times;
    }

private:
    bool eventFilter(QObject *, QEvent *event) override
    {
        // When it has been painted.
        if (event->type() == QEvent::Paint && _times.all == 0 && rows() > 0)
            QMetaObject::invokeMethod(
                this, [this, painted = rows()] { note(painted); }, Qt::QueuedConnection);
        return false;
    }
    void note(int painted)
    {
        const double now = double(_time.nsecsElapsed()) / 1e6;
        if (_times.first == 0)
            _times.first = now;
        if (_times.all > 0 || painted != _expected)
            return;
        _times.all = now;
        _loop.quit();
    }
    void turn()
    {
        const qint64 now = _time.nsecsElapsed();
        _times.longestGap = std::max(_times.longestGap, double(now - _lastTurn) / 1e6);
        _lastTurn = now;
    }
    int rows() const { return _table.model()->rowCount(); }

    SpotlightSearchSheet &_sheet;
    SearchResultTable &_table = *_sheet.resultTable;
    QTimer _timer;
    QTimer _patience;
    QEventLoop _loop;
    QElapsedTimer _time;
    qint64 _lastTurn = 0; // nanoseconds
    Times _times;
    int _expected = 0;
};

// The program's own way, to the end.
void waitForIndex()
{
    const std::atomic<bool> never { false };
    IndexReader reader(IndexFile::path(), never);
    QEventLoop loop;
    QTimer look;
    look.callOnTimeout(&loop, [&] {
        if (reader.begin() && reader.hasAll())
            loop.quit();
        reader.end();
    });
    look.start(200);
    loop.exec();
}

void reportMilliseconds(const char *name, const std::vector<double> &times)
{
    char detail[120];
    std::snprintf(detail, sizeof detail, "ms, median of %d runs, longest %.1f", int(times.size()),
                  std::ranges::max(times));
    Measure::print(name, Measure::median(times), detail);
}

void measure(SpotlightSearchSheet &sheet, const QByteArray &tree, const QByteArray &indexer)
{
    Search search(sheet);
    const QString word = QString::fromLatin1(SearchTree::Word);
    const auto floor = [&] {
        if (const long names = bareNames(tree); names < SearchTree::Files)
            fail("Names", names);
    };
    floor();
    std::vector<double> gaps;
    const auto noIndex = [&] {
        gaps.push_back(search.run(word, SearchTree::FilesWithWord / 2).longestGap);
    };
    Measure::report("search-no-index", Runs, { .work = noIndex, .floor = floor });
    IndexerProcess running(indexer, 1s); // to the end: an index that nobody follows is walked, too
    running.start();
    waitForIndex();
    std::vector<double> firsts;
    const auto all = [&] {
        const Times times = search.run(word, SearchTree::FilesWithWord);
        firsts.push_back(times.first);
        gaps.push_back(times.longestGap);
    };
    Measure::report("search-all", Runs, { .work = all, .floor = floor });
    reportMilliseconds("search-first", firsts);
    // As many as there can be.
    for (int run = 0; run < 3; ++run)
        gaps.push_back(search.run(u"txt"_s, SearchTree::Files).longestGap);
    reportMilliseconds("search-blocks", gaps);
}

void measureOthers(const QByteArray &tree, const QByteArray &database)
{
    const auto floor = [&] { bareNames(tree); };
    runProgram({ "/usr/bin/updatedb", "-U", tree, "-o", database, "-l", "0", "--prunepaths", "",
                 "--prunenames", "" });
    // What it says is no line of ours.
    const auto plocate = [&] {
        runProgram({ "/bin/sh", "-c", "exec \"$@\" > /dev/null", "sh", "/usr/bin/plocate", "-i",
                     "-d", database, SearchTree::Word });
    };
    Measure::report("search-plocate", Runs, { .work = plocate, .floor = floor });
    const auto find = [&] {
        runProgram({ "/usr/bin/find", tree, "-iname", QByteArray("*") + SearchTree::Word + "*",
                     "-fprint", "/dev/null" });
    };
    Measure::report("search-find", Runs, { .work = find, .floor = floor });
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "Usage: %s BUILD-FOLDER\n", argv[0]);
        return 2;
    }
    const OwnHome home;
    const QApplication application(argc, argv);
    const QByteArray tree = home.bytes(u"tree"_s);
    SearchTree::make(tree);
    Panes panes(home);
    QTimer::singleShot(0, &panes.application, [&] {
        auto *sheet = panes.application.mainWindow().findChild<SpotlightSearchSheet *>();
        measure(*sheet, tree, QByteArray(argv[1]) + "/twinleaf-index");
        sheet->done(0);
    });
    panes.bus.post(SpotlightSearch, {});
    measureOthers(tree, home.bytes(u"names.db"_s));
    return 0;
}
