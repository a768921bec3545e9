// The size of a tree of 200,000 files, against a bare walk that looks at each of them.

#include "bench/BareWalk.h"
#include "bench/Measure.h"
#include "bench/OwnHome.h"
#include "files/FolderWalk.h"

#include <QCoreApplication>

namespace {

using namespace Qt::StringLiterals;

constexpr int Runs = 5;

} // namespace

int main(int argc, char **argv)
{
    const OwnHome home;
    const QCoreApplication application(argc, argv);
    const QString tree = home.path(u"tree"_s);
    makeManyFiles(tree.toUtf8());
    const std::atomic<bool> never { false };
    Measure::report(
        "folder-size", Runs,
        { .work = [&] { folderTotal(tree, never); }, .floor = [&] { bareWalk(tree.toUtf8()); } });
    return 0;
}
