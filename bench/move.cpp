// Moving with the program's own requests and reloading of the panes: inside a file system against
// bare renames, to another one against copying, writing out and removing by the system's commands.

#include "bench/BareFiles.h"
#include "bench/LargeFolder.h"
#include "bench/Measure.h"
#include "bench/Panes.h"

#include <QApplication>

namespace {

using namespace Qt::StringLiterals;

constexpr int Runs = 9;
constexpr int Folders = 100;
constexpr int Items = 5000;

} // namespace

int main(int argc, char **argv)
{
    const OwnHome home;
    const QApplication application(argc, argv);
    Panes panes(home);
    QString source;
    QString target;
    const auto move = [&](const QStringList &items) {
        panes.twinleaf.moveItems({ source, target, items, Side::Left, UpdateBoth::Yes });
        panes.twinleaf.drain();
    };

    QByteArrayList names;
    QStringList items;
    int made = 0;
    const auto newFolders = [&](const QString &from) {
        ++made;
        source = from + u"/source "_s + QString::number(made);
        target = home.path(u"target "_s + QString::number(made));
        mkdir(source.toUtf8().constData(), 0755);
        mkdir(target.toUtf8().constData(), 0755);
    };
    const auto filledSource = [&] {
        newFolders(home.folder.path());
        fillFolder(source.toUtf8(), Items, smallContent);
        sync();
        panes.open(source);
        items.clear();
        names.clear();
        for (int row = 1; row < panes.model.rowsLeft().size(); ++row) {
            items.append(panes.model.rowsLeft()[row].name());
            names.append(items.last().toUtf8());
        }
    };
    const std::string disk = BareFiles::fileSystem(home.folder.path().toUtf8());
    Measure::report("move-items", Runs,
                    { .work = [&] { move(items); },
                      .floor = [&] { BareFiles::move(source.toUtf8(), target.toUtf8(), names); },
                      .before = filledSource },
                    ", " + disk);

    // The memory's file system is one that each machine has beside its disk.
    const QTemporaryDir memory(u"/dev/shm/twinleaf-bench-XXXXXX"_s);
    if (!memory.isValid()) {
        std::fprintf(stderr, "move-across needs /dev/shm\n");
        return 1;
    }
    const auto newTree = [&] {
        newFolders(memory.path());
        makeTree(source.toUtf8() + "/tree", Folders);
        sync();
    };
    const auto bareAcross = [&] {
        const QByteArray tree = source.toUtf8() + "/tree";
        runProgram({ "/bin/cp", "-R", "-p", tree, target.toUtf8() });
        BareFiles::demand(syncfs(BareFiles::folder(target.toUtf8()).number()) == 0, "syncfs");
        runProgram({ "/bin/rm", "-rf", tree });
    };
    Measure::report(
        "move-across", Runs,
        { .work = [&] { move({ u"tree"_s }); }, .floor = bareAcross, .before = newTree },
        ", " + BareFiles::fileSystem(memory.path().toUtf8()) + " to " + disk);
    return 0;
}
