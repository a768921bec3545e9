// twinleaf-reader: reads files that come from anywhere, for the program that started it and holds
// the other end of its socket. What such a file may make it do has to be done without paths,
// network, programs and writing.

#include "platform/ReaderWords.h"
#include "reader/Confinement.h"
#include "reader/Questions.h"
#include "reader/WarmUp.h"

#include <QGuiApplication>

#include <array>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

// Ends this process with the one that asks, whatever it is doing then.
bool endWithAsking()
{
    // By what cannot be ignored.
    if (fcntl(ReaderWords::LifeNumber, F_SETOWN, getpid()) != 0
        || fcntl(ReaderWords::LifeNumber, F_SETSIG, SIGKILL) != 0
        || fcntl(ReaderWords::LifeNumber, F_SETFL, O_ASYNC) != 0)
        return false;
    pollfd ended { ReaderWords::LifeNumber, 0, 0 };
    return poll(&ended, 1, 0) == 0;
}

// What libraries complain about helps nobody, and is written by the file. The sanitizers' reports
// are for us.
void silence()
{
#if !defined(__SANITIZE_ADDRESS__)
    dup2(STDOUT_FILENO, STDERR_FILENO);
#endif
}

// The application object makes a folder for itself among the temporary ones where it finds none;
// here none can be made.
void leaveFoldersAlone()
{
    qputenv("TMPDIR", "/proc/self");
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type == QtFatalMsg)
            std::fprintf(stderr, "twinleaf-reader: %s\n", text.toLocal8Bit().constData());
    });
}

} // namespace

int main()
{
    void *const memory = mmap(nullptr, size_t(ReaderWords::MemorySize), PROT_READ | PROT_WRITE,
                              MAP_SHARED, ReaderWords::MemoryNumber, 0);
    if (memory == MAP_FAILED || !endWithAsking()) {
        std::fputs("twinleaf-reader is started by other programs.\n", stderr);
        return 2;
    }
    close(ReaderWords::MemoryNumber);
    Confinement::setLimits();
    leaveFoldersAlone();
    // Texts in pictures need fonts, and these the application object; it needs no window system.
    std::array name { "twinleaf-reader", "-platform", "offscreen" };
    int count = int(name.size());
    QGuiApplication application(count, const_cast<char **>(name.data()));
    std::setlocale(LC_NUMERIC, "C");
    warmUp();
    silence();
    Questions questions(ReaderWords::SocketNumber, static_cast<char *>(memory));
    questions.answerAll(Confinement::closeDoors());
    // Without the libraries' own ends, which may be in any state by now.
    _exit(0);
}
