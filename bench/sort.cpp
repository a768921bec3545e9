// Sorting the rows by each column, against std::sort on the bare keys.

#include "bench/LargeFolder.h"
#include "bench/Measure.h"
#include "bench/OwnHome.h"
#include "model/Listing.h"
#include "widgets/FileKinds.h"

#include <QApplication>

namespace {

using namespace Qt::StringLiterals;

constexpr int Runs = 15;

template <typename Bare, typename Key>
void reportSort(const char *name, const Listing &listing, Column column, Key keyOf)
{
    std::vector<decltype(keyOf(listing[0]))> keys;
    for (qsizetype row = 0; row < listing.size(); ++row)
        keys.push_back(keyOf(listing[row]));
    Measure::report(name, Runs,
                    { .work = [&] { listing.sorted(column, SortDirection::Ascending); },
                      .floor =
                          [&] {
                              std::vector<Bare> bare(keys.begin(), keys.end());
                              std::ranges::sort(bare);
                          } });
}

} // namespace

int main(int argc, char **argv)
{
    const OwnHome home;
    const QApplication application(argc, argv);
    const QString folder = home.path(u"folder"_s);
    fillFolder(folder.toUtf8(), 100'000, [](int number) {
        return std::string(size_t(static_cast<unsigned>(number) * 2654435761U % 4096), 'x');
    });

    const FileKinds kinds;
    const Listing listing = Listing::read(folder, {}, kinds);
    reportSort<std::string_view>("sort-100k-name", listing, Column::Name,
                                 [](const Entry &entry) { return entry.name().toStdString(); });
    reportSort<qint64>("sort-100k-size", listing, Column::Size,
                       [](const Entry &entry) { return entry.pureSize(); });
    reportSort<qint64>("sort-100k-date", listing, Column::Date,
                       [](const Entry &entry) { return entry.date().toMSecsSinceEpoch(); });
    reportSort<std::string_view>("sort-100k-type", listing, Column::Type,
                                 [](const Entry &entry) { return entry.type().toStdString(); });
    return 0;
}
