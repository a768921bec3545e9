// Packing and unpacking with the program's own requests, sheet and reloading of the panes, against
// zip and bsdtar alone. Usage: bench_archive FOLDER-OF-THE-PROGRAMS

#include "bench/LargeFolder.h"
#include "bench/Measure.h"
#include "bench/Panes.h"

#include <QApplication>

namespace {

using namespace Qt::StringLiterals;

constexpr int Runs = 7;
constexpr int Folders = 100;
constexpr int FilesInFolder = 100;

std::string content(int number)
{
    std::string text;
    while (text.size() < 4096)
        text += "line " + std::to_string(number) + " of " + std::to_string(text.size()) + '\n';
    text.resize(4096);
    return text;
}

void makeTree(const OwnHome &home, const QString &path)
{
    mkdir(home.bytes(path).constData(), 0755);
    for (int number = 0; number < Folders; ++number)
        fillFolder(home.bytes(path) + "/folder " + QByteArray::number(number), FilesInFolder,
                   content);
}

} // namespace

int main(int argc, char **argv)
{
    const OwnHome home;
    if (argc > 1)
        qputenv("PATH", QByteArray(argv[1]) + ':' + qgetenv("PATH"));
    const QApplication application(argc, argv);
    mkdir(home.bytes(u"from"_s).constData(), 0755);
    makeTree(home, u"from/tree"_s);
    Panes panes(home);
    panes.open(home.path(u"from"_s));

    // Each time in a folder of a new name: making the same names again at one place slows the file
    // system many times over.
    int targets = 0;
    QString target;
    const auto newTarget = [&] {
        target = home.path(u"to"_s + QString::number(++targets));
        mkdir(target.toUtf8().constData(), 0755);
        sync(); // what the run before wrote is not written during this one
    };
    const auto runBare = [&](const QStringList &arguments) {
        if (!panes.programs.runIn(home.path(u"from"_s), arguments).succeeded())
            std::exit(1);
    };

    const auto pack = [&] {
        panes.twinleaf.archiveItems({ home.path(u"from/tree"_s) }, target, u"tree"_s);
        panes.twinleaf.drain();
    };
    const auto barePack = [&] {
        runBare({ u"/usr/bin/zip"_s, u"-r"_s, target + u"/tree.zip"_s, u"tree"_s });
    };
    Measure::report("pack", Runs, { .work = pack, .floor = barePack, .before = newTarget });

    const QString archive = target + u"/tree.zip"_s;
    const auto unpack = [&] {
        panes.twinleaf.unpackArchive(archive, target);
        panes.twinleaf.drain();
    };
    const auto bareUnpack = [&] {
        runBare({ u"/usr/bin/bsdtar"_s, u"-xf"_s, archive, u"-C"_s, target });
    };
    Measure::report("unpack", Runs, { .work = unpack, .floor = bareUnpack, .before = newTarget });
    return 0;
}
