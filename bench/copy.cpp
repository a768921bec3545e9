// Copying with the program's own requests, working sheet and reloading of the panes, against the
// copy command alone.

#include "bench/LargeFolder.h"
#include "bench/Measure.h"
#include "bench/Panes.h"

#include <QApplication>

#include <spawn.h>
#include <sys/wait.h>

namespace {

using namespace Qt::StringLiterals;

constexpr int Runs = 7;
constexpr int Folders = 100;
constexpr int FilesInFolder = 100;
constexpr int Items = 5000;

std::string content(int)
{
    return std::string(4096, 'x');
}

void bareCopy(const QByteArray &source, const QByteArray &target)
{
    const char *const arguments[] = { "/bin/cp",          "-R",   "-p", source.constData(),
                                      target.constData(), nullptr };
    pid_t process = 0;
    int status = 1;
    if (posix_spawn(&process, arguments[0], nullptr, nullptr, const_cast<char *const *>(arguments),
                    environ)
        == 0)
        waitpid(process, &status, 0);
    if (status != 0)
        std::exit(1);
}

// Copies the items of `from`, by the program and by the bare command, each time to a folder of a
// new name: making the same names again at one place slows the file system many times over.
void reportCopy(const char *name, const OwnHome &home, Panes &panes, const QString &from,
                const QStringList &items)
{
    int targets = 0;
    QString target;
    const auto newTarget = [&] {
        target = home.path(QString::fromLatin1(name) + QString::number(++targets));
        mkdir(target.toUtf8().constData(), 0755);
        // What the run before wrote is not written during this one.
        sync();
    };
    const auto copy = [&] {
        panes.twinleaf.copyItems({ from, target, items, Side::Left, UpdateBoth::Yes });
        panes.twinleaf.drain();
    };
    const auto bare = [&] {
        const QByteArray fromBytes = from.toUtf8() + '/';
        const QByteArray targetBytes = target.toUtf8() + '/';
        for (const QString &item : items)
            bareCopy(fromBytes + item.toUtf8(), targetBytes + item.toUtf8());
    };
    Measure::report(name, Runs, { .work = copy, .floor = bare, .before = newTarget });
}

} // namespace

int main(int argc, char **argv)
{
    const OwnHome home;
    const QApplication application(argc, argv);
    const QString trees = home.path(u"trees"_s);
    const QString files = home.path(u"files"_s);
    mkdir(trees.toUtf8().constData(), 0755);
    mkdir((trees + u"/tree"_s).toUtf8().constData(), 0755);
    for (int number = 0; number < Folders; ++number)
        fillFolder((trees + u"/tree/folder "_s + QString::number(number)).toUtf8(), FilesInFolder,
                   content);
    fillFolder(files.toUtf8(), Items, content);

    Panes panes(home);
    reportCopy("copy-tree", home, panes, trees, { u"tree"_s });
    QStringList items;
    panes.open(files);
    for (int row = 1; row < panes.model.rowsLeft().size(); ++row)
        items.append(panes.model.rowsLeft()[row].name());
    reportCopy("copy-items", home, panes, files, items);
    return 0;
}
