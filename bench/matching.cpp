// Selecting by names in folders of 100,000, against one pass over the names with a hash set.

#include "bench/LargeFolder.h"
#include "bench/Measure.h"
#include "bench/Panes.h"
#include "model/RowMatching.h"

#include <QApplication>
#include <QSet>

#include <filesystem>

namespace {

using namespace Qt::StringLiterals;

constexpr int Runs = 7;
constexpr int Rows = 100'000;

// Each name of one listing into a set, each name of the other looked up in it.
int commonNames(const Listing &here, const Listing &there)
{
    QSet<QString> names;
    names.reserve(there.size());
    for (qsizetype row = 1; row < there.size(); ++row)
        names.insert(there[row].name());
    int common = 0;
    for (qsizetype row = 1; row < here.size(); ++row)
        common += names.contains(here[row].name());
    return common;
}

// Files made one after the other have no date in common: none would be equal to its counterpart.
void giveDate(const QString &folder, std::filesystem::file_time_type date)
{
    for (const auto &file : std::filesystem::directory_iterator(folder.toStdString()))
        std::filesystem::last_write_time(file.path(), date);
}

// A figure of another selection than the one it is named for is none.
void expect(const PaneTable &list, int count)
{
    if (list.selectedRows().size() == count)
        return;
    std::fprintf(stderr, "%d rows are selected\n", int(list.selectedRows().size()));
    std::exit(1);
}

} // namespace

int main(int argc, char **argv)
{
    const OwnHome home;
    const QApplication application(argc, argv);
    const QString left = home.path(u"left"_s);
    const QString right = home.path(u"right"_s);
    fillFolder(left.toUtf8(), Rows, [](int) { return std::string(); });
    // The same first half; then names that the left folder has not.
    fillFolder(right.toUtf8(), Rows / 2, [](int) { return std::string(); });
    fillFolder(
        right.toUtf8(), Rows / 2, [](int) { return std::string(); }, "other ");

    const auto date = std::filesystem::file_time_type::clock::now();
    giveDate(left, date);
    giveDate(right, date);

    Panes panes(home);
    panes.open(left);
    panes.bus.post(DirectoryChanged.right, { .path = right });
    const Listing &here = panes.model.rowsLeft();
    const Listing &there = panes.model.rowsRight();
    const auto floor = [&] { commonNames(here, there); };

    Measure::report("compare-100k", Runs,
                    { .work =
                          [&] {
                              const auto equal = RowMatching::equalRows(here, there);
                              panes.left.selectRows(equal.here);
                              panes.right.selectRows(equal.there);
                          },
                      .floor = floor });
    expect(panes.left, Rows / 2);
    expect(panes.right, Rows / 2);
    Measure::report(
        "select-same-100k", Runs,
        { .work = [&] { panes.left.selectRows(RowMatching::rowsOfSameName(here, there)); },
          .floor = floor });
    expect(panes.left, Rows / 2);
    const ExpandSelection pattern { .method = MatchMethod::EndsWith, .text = u".TXT"_s };
    Measure::report("group-select-100k", Runs,
                    { .work =
                          [&] {
                              panes.left.selectRows(RowMatching::matchingRows(
                                  here, pattern, [](const QDateTime &) { return QString(); }));
                          },
                      .floor = floor });
    expect(panes.left, Rows * 2 / 3);
    return 0;
}
