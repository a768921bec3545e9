// The size of a tree of 200,000 files, against a bare walk that looks at each of them.

#include "bench/LargeFolder.h"
#include "bench/Measure.h"
#include "bench/OwnHome.h"
#include "files/FolderWalk.h"

#include <QCoreApplication>

#include <fts.h>

namespace {

using namespace Qt::StringLiterals;

constexpr int Runs = 5;
constexpr int Folders = 400;
constexpr int FilesPerFolder = 500;

qint64 bareWalk(const QByteArray &folder)
{
    QByteArray root = folder;
    char *roots[] = { root.data(), nullptr };
    FTS *walk = fts_open(roots, FTS_PHYSICAL | FTS_NOCHDIR, nullptr);
    qint64 total = 0;
    while (const FTSENT *entry = fts_read(walk))
        if (entry->fts_info == FTS_F)
            total += entry->fts_statp->st_size;
    fts_close(walk);
    return total;
}

} // namespace

int main(int argc, char **argv)
{
    const OwnHome home;
    const QCoreApplication application(argc, argv);
    const QString tree = home.path(u"tree"_s);
    mkdir(tree.toUtf8(), 0755);
    for (int folder = 0; folder < Folders; ++folder)
        fillFolder((tree + u'/' + QString::number(folder)).toUtf8(), FilesPerFolder,
                   [](int number) { return std::string(size_t(number % 100), 'x'); });
    const std::atomic<bool> never { false };
    Measure::report("folder-size", Runs,
                    { .work = [&] { folderTotal(tree, never); },
                      .floor = [&] { bareWalk(tree.toUtf8()); } });
    return 0;
}
