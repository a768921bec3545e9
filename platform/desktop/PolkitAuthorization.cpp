#include "platform/desktop/PolkitAuthorization.h"

#include "files/FileName.h"
#include "platform/ChildProcess.h"
#include "platform/desktop/DesktopPrograms.h"
#include "platform/desktop/HelperWords.h"
#include "platform/desktop/PasswordWait.h"

#include <QEventLoop>
#include <QLoggingCategory>
#include <QScopedValueRollback>
#include <QThread>

#include <memory>
#include <mutex>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "twinleaf.rights")

constexpr int CannotStart = 127; // as the shell's, and pkexec's
constexpr int MostRevoked = 100; // a polkit that grants them anew each time has an end, too

// A program that runs on a thread of its own, and can be asked to end.
class Run {
public:
    explicit Run(const QStringList &arguments)
        : _thread(QThread::create([this, arguments] { // worker thread
            _end = DesktopPrograms().run(arguments, [this](pid_t process) {
                const std::lock_guard lock(_mutex);
                _process = std::make_unique<ChildProcess>(process);
            });
        }))
    {
        _thread->start();
    }
    // False when the wait was given up before its end.
    bool endsDuring(PasswordWait &wait)
    {
        const QObject context;
        QObject::connect(_thread.get(), &QThread::finished, &context, [&wait] { wait.end(); });
        if (_thread->isFinished())
            wait.end();
        return wait.wait();
    }
    // While it asks for the password it is ours and ends. Once it has root's rights it is none of
    // ours, does what it was asked for and ends soon.
    void giveUp()
    {
        const std::lock_guard lock(_mutex);
        if (_process)
            _process->terminate();
    }
    ProgramEnd end()
    {
        QEventLoop loop;
        QObject::connect(_thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
        if (!_thread->isFinished())
            loop.exec(QEventLoop::ExcludeUserInputEvents);
        _thread->wait();
        return _end;
    }

private:
    std::mutex _mutex;
    std::unique_ptr<ChildProcess> _process; // under it
    ProgramEnd _end; // the thread's until it has ended
    const std::unique_ptr<QThread> _thread;
};

} // namespace

PolkitAuthorization::Programs PolkitAuthorization::installed()
{
    return { u"/usr/bin/pkexec"_s, QStringLiteral(TWINLEAF_RIGHTS_PROGRAM) }; // from CMakeLists.txt
}

PolkitAuthorization::PolkitAuthorization(OpenDialogs &openDialogs, Programs programs)
    : _openDialogs(openDialogs)
    , _programs(std::move(programs))
    , _polkit(u"org.twinleaf.Twinleaf.admin"_s)
{
}

bool PolkitAuthorization::holdsRights(const QStringList &commands)
{
    if (_givenUp || commands.isEmpty() || !_polkit.check().authorized)
        return false;
    _wereHeld = true;
    return true;
}

bool PolkitAuthorization::askForRights(const QStringList &commands)
{
    if (commands.isEmpty() || _isAsking)
        return false;
    const QScopedValueRollback asking(_isAsking, true);
    PasswordWait wait(_parent, _openDialogs);
    if (!_polkit.ask(wait).authorized)
        return false;
    _givenUp = false;
    _wereHeld = true;
    return true;
}

void PolkitAuthorization::giveUpRights()
{
    if (!_wereHeld)
        return;
    // One by one: polkit's call for a whole session would take every program's. What it answers
    // with is the one by which this process has the rights.
    for (int i = 0; i < MostRevoked; ++i) {
        const Polkit::Verdict verdict = _polkit.check();
        if (!verdict.authorized || verdict.temporary.isEmpty()
            || !_polkit.revoke(verdict.temporary))
            break;
    }
    _wereHeld = false;
    _givenUp = true;
}

int PolkitAuthorization::execute(const QString &command, const QStringList &arguments,
                                 const CommandSubject &subject)
{
    const auto words = helperWords(command, arguments, subject);
    if (!words || _isAsking)
        return CannotStart;
    const QScopedValueRollback asking(_isAsking, true);
    // pkexec refuses to work at all for some of what may stand in an environment, and uses none of
    // it. Where nobody can show a dialog it is not to ask on a terminal.
    using For = PasswordWait::For;
    const bool asks = !_polkit.check().authorized;
    PasswordWait wait(_parent, _openDialogs, asks ? For::Password : For::Work);
    Run run(QStringList { u"/usr/bin/env"_s, u"-i"_s, _programs.pkexec,
                          u"--disable-internal-agent"_s, _programs.helper }
            + *words);
    if (!run.endsDuring(wait)) {
        run.giveUp();
        // It may have got the password just then.
        PasswordWait rest(_parent, _openDialogs, For::Work);
        run.endsDuring(rest);
    }
    const ProgramEnd end = run.end();
    if (!end.errorText.isEmpty())
        qCWarning(log, "%s", qUtf8Printable(FileName::shown(end.errorText)));
    return end.started ? end.status : CannotStart;
}
