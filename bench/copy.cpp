// Copying with the program's own requests, working sheet and reloading of the panes, against the
// copy command and a bare loop; copying over what is there, against copying.

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

// Each run copies to a folder of a new name: making the same names again at one place slows the
// file system many times over.
class Targets {
public:
    explicit Targets(const OwnHome &home)
        : _home(home)
    {
    }

    void make()
    {
        path = _home.path(u"target "_s + QString::number(++_made));
        mkdir(bytes().constData(), 0755);
        // What the run before wrote is not written during this one.
        sync();
    }
    QByteArray bytes() const { return path.toUtf8(); }

    QString path;

private:
    const OwnHome &_home;
    int _made = 0;
};

} // namespace

int main(int argc, char **argv)
{
    const OwnHome home;
    const QApplication application(argc, argv);
    const QString trees = home.path(u"trees"_s);
    const QString files = home.path(u"files"_s);
    const QByteArray from = files.toUtf8();
    mkdir(trees.toUtf8().constData(), 0755);
    makeTree(trees.toUtf8() + "/tree", Folders);
    fillFolder(from, Items, smallContent);
    const std::string where = ", " + BareFiles::fileSystem(from);

    Panes panes(home);
    panes.open(files);
    QStringList items;
    QByteArrayList names;
    for (int row = 1; row < panes.model.rowsLeft().size(); ++row) {
        items.append(panes.model.rowsLeft()[row].name());
        names.append(items.last().toUtf8());
    }

    Targets target(home);
    const auto newTarget = [&] { target.make(); };
    const auto copy = [&](const QString &folder, const QStringList &what) {
        panes.twinleaf.copyItems({ folder, target.path, what, Side::Left, UpdateBoth::Yes });
        panes.twinleaf.drain();
    };
    const auto copyItems = [&] { copy(files, items); };
    const auto command = [&](const QByteArray &folder, const QByteArrayList &what) {
        std::vector<QByteArray> words { "/bin/cp", "-R", "-p", "--" };
        for (const QByteArray &name : what)
            words.push_back(folder + '/' + name);
        words.push_back(target.bytes());
        runProgram(words);
    };

    Measure::report("copy-tree", Runs,
                    { .work = [&] { copy(trees, { u"tree"_s }); },
                      .floor = [&] { command(trees.toUtf8(), { "tree" }); },
                      .before = newTarget },
                    where);
    Measure::report("copy-items", Runs,
                    { .work = copyItems,
                      .floor = [&] { BareFiles::copy(from, target.bytes(), names); },
                      .before = newTarget },
                    where);
    Measure::report(
        "copy-items-cp", Runs,
        { .work = copyItems, .floor = [&] { command(from, names); }, .before = newTarget }, where);
    panes.alerts.agrees = true;
    const auto filledTarget = [&] {
        target.make();
        BareFiles::copy(from, target.bytes(), names);
        sync();
    };
    // Against the same copy into an empty folder.
    Measure::report(
        "replace-items", Runs,
        { .work = copyItems, .floor = copyItems, .before = filledTarget, .beforeFloor = newTarget },
        where);
    return 0;
}
