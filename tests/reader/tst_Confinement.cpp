#include "platform/ReaderWords.h"
#include "reader/CallFilter.h"
#include "reader/Confinement.h"
#include "reader/PathFilter.h"
#include "tests/support/TestFolder.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>

namespace {

enum class Door { Limits, Paths, Calls }; // that refuses it, if the system has that

struct Attempt {
    const char *name;
    Door door;
    std::function<bool(const char *path)> succeeds;
};

bool opens(int descriptor)
{
    return descriptor >= 0;
}

const QList<Attempt> &attempts()
{
    static const QList<Attempt> all {
        { "writes a file", Door::Limits,
          [](const char *path) { return write(open(path, O_WRONLY), "x", 1) == 1; } },
        { "reads a path", Door::Paths,
          [](const char *path) { return opens(open(path, O_RDONLY)); } },
        { "reads the accounts", Door::Paths,
          [](const char *) { return opens(open("/etc/passwd", O_RDONLY)); } },
        { "makes a file", Door::Paths,
          [](const char *path) {
              return opens(open((QByteArray(path) + "2").constData(), O_WRONLY | O_CREAT, 0600));
          } },
        { "cuts a file", Door::Paths, [](const char *path) { return truncate(path, 0) == 0; } },
        { "removes a file", Door::Paths, [](const char *path) { return unlink(path) == 0; } },
        { "starts a program", Door::Paths,
          [](const char *) {
              execl("/bin/true", "true", nullptr);
              return false; // had it been started, it would have ended well
          } },
        { "speaks to the network", Door::Calls,
          [](const char *) { return opens(socket(AF_INET, SOCK_STREAM, 0)); } },
        { "speaks to the machine", Door::Calls,
          [](const char *) { return opens(socket(AF_UNIX, SOCK_STREAM, 0)); } },
        { "starts a process", Door::Calls,
          [](const char *) {
              const pid_t process = fork();
              if (process == 0)
                  _exit(0);
              return process > 0;
          } },
        { "signals others", Door::Calls, [](const char *) { return kill(getppid(), 0) == 0; } },
        { "has the kernel signal others", Door::Calls,
          [](const char *) { return fcntl(0, F_SETOWN, getppid()) == 0; } },
        { "makes memory code", Door::Calls,
          [](const char *) {
              return mmap(nullptr, 4096, PROT_READ | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)
                  != MAP_FAILED;
          } },
        { "lets go of its program", Door::Calls,
          [](const char *) {
              constexpr long Cut = 1L << 32; // the kernel takes the lower half of the number
              return close(ReaderWords::LifeNumber) == 0
                  || syscall(SYS_close, ReaderWords::LifeNumber | Cut) == 0;
          } },
        { "limits others", Door::Calls,
          [](const char *) { return prlimit(getppid(), RLIMIT_CORE, nullptr, nullptr) == 0; } },
    };
    return all;
}

enum Result { Refused = 10, Succeeded };

// In a process of its own.
int resultOf(const std::function<int()> &work)
{
    const pid_t process = fork();
    if (process == 0) {
        if (fcntl(ReaderWords::LifeNumber, F_GETFD) < 0)
            dup2(STDIN_FILENO, ReaderWords::LifeNumber);
        _exit(work());
    }
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

// What a process that has closed its doors cannot do any more.
class tst_Confinement : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void closedDoorsStayClosed_data();
    void closedDoorsStayClosed();
    void memoryHasAnEnd();
    void threadsAndOpenFilesStay();
};

void tst_Confinement::closedDoorsStayClosed_data()
{
    QTest::addColumn<int>("attempt");
    for (int i = 0; i < attempts().size(); ++i)
        QTest::newRow(attempts()[i].name) << i;
}

void tst_Confinement::closedDoorsStayClosed()
{
    QFETCH(int, attempt);
    const Attempt &tried = attempts()[attempt];
    TestFolder folder;
    folder.write(u"file"_s, "content");
    const QByteArray path = folder.bytes(u"file"_s);
    const auto tryIt = [&] { return tried.succeeds(path.constData()) ? Succeeded : Refused; };
    {
        const TestFolder other; // that it is the doors that refuse it
        other.write(u"file"_s, "content");
        QVERIFY(resultOf([&] {
                    return tried.succeeds(other.bytes(u"file"_s).constData()) ? Succeeded : Refused;
                })
                != Refused);
    }
    // What all doors together refuse, and each by itself where the system has it.
    QCOMPARE(resultOf([&] {
                 Confinement::setLimits();
                 const quint32 closed = Confinement::closeDoors();
                 const bool isAsked = tried.door == Door::Limits
                     || closed & ReaderWords::CallsClosed
                     || (tried.door == Door::Paths && closed & ReaderWords::PathsClosed);
                 return isAsked ? tryIt() : Refused;
             }),
             int(Refused));
    QCOMPARE(resultOf([&] {
                 prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
                 return tried.door == Door::Paths && closePaths() ? tryIt() : Refused;
             }),
             int(Refused));
    QCOMPARE(resultOf([&] {
                 prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
                 return closeSystemCalls(Paths::Refused) ? tryIt() : Refused;
             }),
             int(Refused));
    QCOMPARE(folder.read(u"file"_s), QByteArray("content"));
    QCOMPARE(folder.names(), QStringList { u"file"_s });
}

void tst_Confinement::memoryHasAnEnd()
{
#if !defined(__SANITIZE_ADDRESS__) // its shadow is larger than any limit
    QCOMPARE(resultOf([] {
                 Confinement::setLimits();
                 const size_t large = size_t(2) << 30;
                 return mmap(nullptr, large, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS,
                             -1, 0)
                         == MAP_FAILED
                     ? Refused
                     : Succeeded;
             }),
             int(Refused));
#endif
}

void tst_Confinement::threadsAndOpenFilesStay()
{
    TestFolder folder;
    folder.write(u"file"_s, "content");
    const int file = open(folder.bytes(u"file"_s), O_RDONLY | O_CLOEXEC);
    QCOMPARE(resultOf([&] {
                 Confinement::setLimits();
                 Confinement::closeDoors();
                 char bytes[7];
                 ssize_t read = 0;
                 std::thread([&] { read = pread(file, bytes, sizeof bytes, 0); }).join();
                 bool closes = true;
                 for (int number = 0; number < Confinement::Descriptors; ++number)
                     closes = closes
                         && (number == ReaderWords::LifeNumber || close(number) == 0
                             || errno == EBADF);
                 return read == 7 && closes ? Succeeded : Refused;
             }),
             int(Succeeded));
    close(file);
}

QTEST_GUILESS_MAIN(tst_Confinement)
#include "tst_Confinement.moc"
