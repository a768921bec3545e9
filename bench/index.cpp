// Making and refreshing the index. Usage: bench_index BUILD-FOLDER
//
// index-build: the names of the tree of 200,000 files, index-refresh: an index of it that is right
// already, each against a bare walk with getdents64 and statx. index-text: text on its way from the
// disk into the index, all on one thread, against reading and decoding the same bytes.
// index-program: the same by the program with its reader, in CPU time of both against that floor.
// index-size: the index of that text against the text. index-memory and index-idle: the program
// with the tree, in MB and in milliseconds of CPU time a second.

#include "bench/Measure.h"
#include "bench/OwnHome.h"
#include "bench/SearchTree.h"
#include "indexer/Tree.h"
#include "search/DocumentWriter.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <dirent.h>
#include <sys/syscall.h>

namespace {

using namespace Qt::StringLiterals;

constexpr int Runs = 5;
constexpr int Texts = 6400;
constexpr size_t TextSize = 10000; // bytes
constexpr double Mega = 1e6;

// The least there is to do for every name and status.
void bareStatxWalk(int parent, const char *name)
{
    const Descriptor folder(::openat(parent, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    SearchTree::demand(folder.isOpen(), name);
    std::vector<std::string> folders;
    alignas(dirent64) char buffer[32768];
    for (;;) {
        const long filled = ::syscall(SYS_getdents64, folder.number(), buffer, sizeof buffer);
        SearchTree::demand(filled >= 0, "getdents64");
        if (filled == 0)
            break;
        for (long at = 0; at < filled;) {
            const auto *entry = reinterpret_cast<const dirent64 *>(buffer + at);
            at += entry->d_reclen;
            if (entry->d_name[0] == '.')
                continue;
            struct statx status { };
            ::statx(folder.number(), entry->d_name, AT_SYMLINK_NOFOLLOW | AT_STATX_DONT_SYNC,
                    STATX_TYPE | STATX_SIZE | STATX_MTIME | STATX_CTIME | STATX_INO, &status);
            if (S_ISDIR(status.stx_mode))
                folders.emplace_back(entry->d_name);
        }
    }
    for (const std::string &inner : folders)
        bareStatxWalk(folder.number(), inner.c_str());
}

void refreshNames()
{
    IndexWriter index(IndexFile::path());
    SearchTree::demand(index.open() == IndexFile::State::Good, "index");
    DocumentWriter documents(index);
    Watches watches;
    Tree tree(index, documents, watches, WalkRules());
    SearchTree::demand(tree.refresh([] { return true; }) && index.commit(), "refresh");
}

QByteArray textPath(int number)
{
    return qgetenv("HOME") + "/text " + QByteArray::number(number) + ".txt";
}

QString decoded(int number)
{
    QFile file(QString::fromUtf8(textPath(number)));
    SearchTree::demand(file.open(QIODevice::ReadOnly), textPath(number));
    return QString::fromUtf8(file.readAll());
}

void indexTexts()
{
    IndexWriter index(IndexFile::path());
    SearchTree::demand(index.open() == IndexFile::State::Good, "index");
    DocumentWriter documents(index);
    qint64 written = 0;
    for (int number = 0; number < Texts; ++number) {
        documents.put({ .folder = IndexFile::Home,
                        .name = QByteArray::number(number),
                        .outcome = IndexFile::Outcome::Read,
                        .text = decoded(number).toUtf8() });
        written += documents.takeWritten();
        if (written > 16 * 1024 * 1024 || number == Texts - 1) {
            SearchTree::demand(index.commit(), "commit");
            written = 0;
        }
    }
}

// A running program: what the kernel says of it.
QByteArray processFile(qint64 process, const char *name)
{
    QFile file(QString::fromLatin1("/proc/%1/%2").arg(process).arg(QLatin1StringView(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

double cpuMilliseconds(qint64 process)
{
    const QByteArray status = processFile(process, "stat");
    const QByteArrayList fields = status.mid(status.lastIndexOf(')') + 2).split(' ');
    double ticks = fields.size() > 12 ? fields[11].toDouble() + fields[12].toDouble() : 0;
    ticks *= 1000.0 / double(::sysconf(_SC_CLK_TCK));
    const QByteArray task = "task/" + QByteArray::number(process) + "/children";
    for (const QByteArray &child : processFile(process, task).simplified().split(' ')) {
        if (!child.isEmpty())
            ticks += cpuMilliseconds(child.toLongLong());
    }
    return ticks;
}

// The program at work until the index has everything.
class Program {
public:
    explicit Program(const QString &folder)
    {
        IndexFile::remove(IndexFile::path());
        _process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        _process.start(folder + u"/twinleaf-index"_s, {});
        SearchTree::demand(_process.waitForStarted(), "twinleaf-index");
        while (!isWhole())
            QThread::msleep(100);
    }
    ~Program()
    {
        _process.closeWriteChannel();
        _process.waitForFinished();
    }
    qint64 number() const { return _process.processId(); }
    double mostMemory() const // MB
    {
        const QByteArray status = processFile(number(), "status");
        return status.mid(status.indexOf("VmHWM:") + 6).simplified().split(' ')[0].toDouble()
            / 1024;
    }

private:
    static bool isWhole()
    {
        Database database;
        return IndexFile::openForReading(IndexFile::path(), database) == IndexFile::State::Good
            && IndexFile::state(database, IndexFile::Key::Names) != 0
            && database.number("SELECT count(*) FROM folder WHERE pending") == 0;
    }

    QProcess _process;
};

void reportTexts(const QString &programs)
{
    qint64 bytes = 0;
    for (int number = 0; number < Texts; ++number) {
        QFile file(QString::fromUtf8(textPath(number)));
        SearchTree::demand(file.open(QIODevice::WriteOnly), textPath(number));
        bytes +=
            file.write(QByteArray::fromStdString(SearchText(uint64_t(number) + 1).bytes(TextSize)));
    }
    const auto decodeAll = [] {
        for (int number = 0; number < Texts; ++number)
            decoded(number);
    };
    double fastest = 1e9;
    Measure::report(
        "index-text", 3,
        { .work = [&] { fastest = std::min(fastest, Measure::milliseconds(indexTexts)); },
          .floor = decodeAll,
          .before = [] { IndexFile::remove(IndexFile::path()); } });
    std::printf("# index-text: %.1f MB/s at the fastest, wanted 40\n",
                double(bytes) / Mega / fastest * 1000);
    const Program program(programs);
    const double cpu = cpuMilliseconds(program.number());
    const double floor = Measure::milliseconds(decodeAll);
    char detail[160];
    std::snprintf(detail, sizeof detail, "%.1f MB/s of CPU time, %.1f MB",
                  double(bytes) / Mega / cpu * 1000, double(bytes) / Mega);
    Measure::print("index-program", cpu / floor, detail);
    Database database;
    IndexFile::openForReading(IndexFile::path(), database);
    const double size =
        double(database.number("PRAGMA page_count") * database.number("PRAGMA page_size"));
    std::snprintf(detail, sizeof detail, "%.1f MB for %.1f MB of text", size / Mega,
                  double(bytes) / Mega);
    Measure::print("index-size", size / double(bytes), detail);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "Usage: %s BUILD-FOLDER\n", argv[0]);
        return 2;
    }
    const OwnHome home;
    const QCoreApplication application(argc, argv);
    const QString programs = QString::fromUtf8(argv[1]);

    qputenv("HOME", home.bytes(u"texts"_s));
    ::mkdir(home.bytes(u"texts"_s), 0755);
    reportTexts(programs);

    const QByteArray tree = home.bytes(u"tree"_s);
    SearchTree::make(tree);
    qputenv("HOME", tree);
    const auto bare = [&tree] { bareStatxWalk(AT_FDCWD, tree); };
    Measure::report("index-build", Runs,
                    { .work = refreshNames,
                      .floor = bare,
                      .before = [] { IndexFile::remove(IndexFile::path()); },
                      .beforeFloor = [] {} });
    refreshNames();
    Measure::report("index-refresh", Runs, { .work = refreshNames, .floor = bare });

    const Program program(programs);
    Measure::print("index-memory", program.mostMemory(), "MB at most, with 200,000 files");
    const double before = cpuMilliseconds(program.number());
    constexpr int Seconds = 5;
    QThread::sleep(Seconds);
    Measure::print("index-idle", (cpuMilliseconds(program.number()) - before) / Seconds,
                   "ms of CPU time a second");
    return 0;
}
