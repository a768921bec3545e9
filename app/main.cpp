#include "app/Application.h"
#include "app/CommandLine.h"
#include "app/DesktopServices.h"
#include "base/Localized.h"
#include "platform/desktop/SessionServices.h"
#include "platform/desktop/SilentBus.h"
#include "platform/desktop/StartupToken.h"
#include "settings/BundleInfo.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QTimer>
#include <QTranslator>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

int answerTask(const CommandLine &line)
{
    switch (line.task) {
    case CommandLine::Task::Help:
        std::fputs(usageText().toUtf8().constData(), stdout);
        return 0;
    case CommandLine::Task::Version:
        std::printf("twinleaf %s\n", BundleInfo::version().toUtf8().constData());
        return 0;
    default:
        std::fprintf(stderr, "twinleaf: %s\n", line.complaint.toUtf8().constData());
        return 2;
    }
}

// Whether the toolkit has somewhere to look for a display; with nothing it would end in a crash.
bool namesDisplay(int argc, char **argv)
{
    for (const char *variable : { "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM" })
        if (!qEnvironmentVariableIsEmpty(variable))
            return true;
    // The toolkit's own options, with one dash or two.
    return std::any_of(argv, argv + argc, [](QByteArrayView argument) {
        const QByteArrayView name = argument.startsWith("--") ? argument.sliced(1) : argument;
        return name.startsWith("-platform") || name.startsWith("-display");
    });
}

// What needs no window needs no display. The toolkit takes its own options out of the others.
std::unique_ptr<QCoreApplication> applicationFor(int &argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        const QByteArrayView argument(argv[i]);
        if (argument == "--")
            break; // folders follow, whatever their names
        if (argument == "--help" || argument == "-h" || argument == "--version"
            || argument == "--new-window")
            return std::make_unique<QCoreApplication>(argc, argv);
    }
    if (!namesDisplay(argc, argv))
        return std::make_unique<QCoreApplication>(argc, argv);
    return std::make_unique<QApplication>(argc, argv);
}

QStringList foldersOf(const CommandLine &line)
{
    QStringList folders;
    for (const Side side : { Side::Left, Side::Right })
        if (const auto &folder = line.folders[side])
            folders.append(*folder);
    return folders;
}

// The exit status, when this start has no window of its own.
std::optional<int> takePlaceIn(SessionServices &session, const CommandLine &line,
                               const QByteArray &token)
{
    const SingleInstance::Verdict verdict = session.begin(foldersOf(line), token);
    for (const QString &complaint : verdict.complaints)
        complain(complaint);
    switch (verdict.role) {
    case SingleInstance::Verdict::Role::Done:
        return 0;
    case SingleInstance::Verdict::Role::Refused:
        return 1;
    default:
        return std::nullopt;
    }
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(u"Twinleaf"_s);
    QCoreApplication::setApplicationVersion(BundleInfo::version());
    QGuiApplication::setDesktopFileName(u"org.twinleaf.Twinleaf"_s);
    leaveSilentBusesAlone();
    const QByteArray token = StartupToken::takeFromEnvironment();
    const auto application = applicationFor(argc, argv);
    // Buttons, file dialogs and names of keys are the toolkit's; the later one counts first.
    QTranslator ofToolkit;
    if (ofToolkit.load(QLocale(), u"qtbase"_s, u"_"_s,
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&ofToolkit);
    QTranslator translator;
    if (translator.load(QLocale(), u"twinleaf"_s, u"_"_s, u":/i18n"_s))
        QCoreApplication::installTranslator(&translator);

    const CommandLine line = readCommandLine(argc, argv);
    if (line.task != CommandLine::Task::Run && line.task != CommandLine::Task::SelfTest)
        return answerTask(line);
    if (!line.complaint.isEmpty())
        complain(line.complaint);
    std::optional<SessionServices> session;
    if (line.task == CommandLine::Task::Run) {
        session.emplace();
        if (const auto status = takePlaceIn(*session, line, token))
            return *status;
    }
    if (!qobject_cast<QApplication *>(application.get())) {
        complain(localized("there is no display to open a window on"));
        return 1;
    }

    // Alerts and sheets come and go; the end of the program is the main window's to ask for.
    QApplication::setQuitOnLastWindowClosed(false);
    DesktopServices desktop;
    Application twinleaf(desktop.services(), line);
    desktop.setMainWindow(&twinleaf.mainWindow());
    if (session) {
        session->serve(twinleaf.showOnRequest(), twinleaf.mainWindow());
        QObject::connect(&twinleaf, &Application::isEnding, &twinleaf,
                         [&session] { session->end(); });
    }
    // Inside the event loop: what ends the program also ends a start that waits for a disk.
    QTimer::singleShot(0, &twinleaf, [&twinleaf, &desktop, &line, &token] {
        twinleaf.start();
        desktop.windowStands();
        // Elsewhere the toolkit has taken the first window's for itself.
        if (!token.isEmpty() && QGuiApplication::platformName().startsWith("wayland"_L1))
            StartupToken::bringForward(twinleaf.mainWindow(), token);
        // Opens the window, turns the event loop and quits.
        if (line.task == CommandLine::Task::SelfTest)
            QTimer::singleShot(0, &twinleaf, &Application::quit);
    });
    const int status = QCoreApplication::exec();
    if (session)
        session->end();
    desktop.stopReading();
    // A thread that stands at a server that is gone must not come back into what goes from here on.
    const bool isAtRest = twinleaf.end();
    if (!desktop.end() || !isAtRest)
        std::_Exit(status);
    return status;
}
