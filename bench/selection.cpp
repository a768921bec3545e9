// Every second row and ".." into the selection, which the pane then takes ".." out of again;
// painted, and read back. The ratio is the time per row against that in a folder of half the size:
// 1 is linear.

#include "bench/LargeFolder.h"
#include "bench/Measure.h"
#include "bench/Panes.h"

#include <QApplication>

namespace {

using namespace Qt::StringLiterals;

constexpr int Runs = 9;
constexpr int Rows = 100'000;

double selectHalf(Panes &panes, const QString &folder)
{
    panes.open(folder);
    panes.paint();
    RowSet wanted { ParentRow };
    for (int row = FirstItemRow; row < panes.model.rowsLeft().size(); row += 2)
        wanted.append(row);
    RowSet read;
    const double time = Measure::milliseconds([&] {
        panes.left.selectRows(wanted);
        panes.paint();
        read = panes.left.selectedRows();
    });
    if (read != wanted.mid(1))
        std::exit(1);
    return time;
}

} // namespace

int main(int argc, char **argv)
{
    const OwnHome home;
    const QApplication application(argc, argv);
    const QString whole = home.path(u"whole"_s);
    const QString half = home.path(u"half"_s);
    fillFolder(whole.toUtf8(), Rows, [](int) { return std::string(); });
    fillFolder(half.toUtf8(), Rows / 2, [](int) { return std::string(); });

    Panes panes(home);
    std::vector<double> wholes;
    std::vector<double> halves;
    for (int run = 0; run < Runs; ++run) {
        wholes.push_back(selectHalf(panes, whole));
        halves.push_back(selectHalf(panes, half));
    }
    char detail[128];
    std::snprintf(detail, sizeof detail,
                  "%.1f ms; against %.1f ms in a folder of half the size, %d runs",
                  Measure::median(wholes), Measure::median(halves), Runs);
    Measure::print("select-half-100k", Measure::median(wholes) / 2 / Measure::median(halves),
                   detail);
    return 0;
}
