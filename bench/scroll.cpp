// Paging through 100,000 rows with labels and icons: the time of a frame. The ratio is that of the
// 99th percentile to a frame of 16 ms.

#include "bench/LargeFolder.h"
#include "bench/Measure.h"
#include "bench/Panes.h"

#include <QApplication>
#include <QScrollBar>

#include <sys/xattr.h>

namespace {

using namespace Qt::StringLiterals;

constexpr int Rows = 100'000;
constexpr int Frames = 1000;
constexpr double Frame = 16; // milliseconds

} // namespace

int main(int argc, char **argv)
{
    const OwnHome home;
    const QApplication application(argc, argv);
    const QString folder = home.path(u"folder"_s);
    fillFolder(folder.toUtf8(), Rows, [](int) { return std::string(); });

    Panes panes(home);
    panes.open(folder);
    int labelled = 0;
    for (int row = 1; row < panes.model.rowsLeft().size(); ++row) {
        const char label = char('0' + row % 8);
        labelled += setxattr(panes.model.rowsLeft()[row].path().toUtf8(), "user.twinleaf.label",
                             &label, 1, 0)
            == 0;
    }
    panes.open(folder);
    panes.paint();
    std::vector<double> times;
    QScrollBar *bar = panes.left.verticalScrollBar();
    for (int frame = 0; frame < Frames; ++frame) {
        bar->setValue(bar->maximum() / Frames * frame);
        times.push_back(Measure::milliseconds([&] { panes.paint(); }));
    }
    std::ranges::sort(times);
    const double slow = times[size_t(Frames * 99 / 100)];
    char detail[128];
    std::snprintf(detail, sizeof detail, "%.1f ms, the middle %.1f ms, %d frames, %d rows labelled",
                  slow, times[Frames / 2], Frames, labelled);
    Measure::print("scroll-100k", slow / Frame, detail);
    return 0;
}
