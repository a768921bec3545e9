#include "operations/Authentication.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "model/Messages.h"
#include "platform/Alerts.h"
#include "platform/Programs.h"

#include <QApplication>
#include <QLoggingCategory>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "twinleaf.rights")

const auto Ps = u"/bin/ps"_s;
const auto Columns = u"-axwwopid,command"_s;
constexpr qsizetype LongestShown = 500; // characters of a command line
constexpr qsizetype MostCommands = 20;
constexpr qsizetype MostArguments = 19;
constexpr qsizetype LongestCommand = 127; // bytes: with its end it fits the value of a right

// The commands that rights are asked for; none at all where there would be one that is none.
QStringList rightsFor(const QStringList &commands)
{
    const QStringList first = commands.first(std::min(commands.size(), MostCommands));
    const bool fit = std::all_of(first.begin(), first.end(), [](const QString &command) {
        // Cut off, it would be the right of another command.
        return FileName::toBytes(command).size() <= LongestCommand;
    });
    return fit ? first : QStringList();
}

// Whether a name means only itself to the shell, in double quotes, and to grep as an argument.
bool isPlain(const QString &name)
{
    return !name.startsWith(u'-') && std::none_of(name.begin(), name.end(), [](QChar letter) {
        return u"\"$`\\\n"_s.contains(letter) || letter < u' ';
    });
}

// As ASCII: any other byte is in no name.
QString asciiText(const QByteArray &bytes)
{
    QString text;
    for (const char byte : bytes)
        text += quint8(byte) < 0x80 ? QChar(QLatin1Char(byte)) : QChar(QChar::ReplacementCharacter);
    return text;
}

// Of lines as ps has them: what is before the name belongs to the first process that has it.
int processIn(const QString &lines, const QString &name)
{
    const qsizetype found = lines.indexOf(name);
    const QString leading = lines.first(found < 0 ? lines.size() : found);
    if (leading.contains(u"grep"))
        return 0;
    const QString number = leading.trimmed();
    const auto end = std::find_if(number.begin(), number.end(),
                                  [](QChar letter) { return letter < u'0' || letter > u'9'; });
    return number.first(end - number.begin()).toInt();
}

} // namespace

Authentication::Authentication(AuthorizationServices &authorization, Programs &programsToRun,
                               Alerts &alertsToAsk, MessageBus &messageBus)
    : services(authorization)
    , programs(programsToRun)
    , alerts(alertsToAsk)
    , bus(messageBus)
{
}

Authentication::~Authentication()
{
    deauthenticate();
}

bool Authentication::isAuthenticated(const QStringList &commands)
{
    _hasReference = true;
    const QStringList rights = rightsFor(commands);
    return !rights.isEmpty() && services.holdsRights(rights);
}

bool Authentication::fetchPassword(const QStringList &commands)
{
    const QStringList rights = rightsFor(commands);
    if (!_hasReference || rights.isEmpty() || !services.askForRights(rights))
        return false;
    bus.post(Authenticated, { this });
    return true;
}

bool Authentication::authenticate(const QStringList &commands)
{
    if (!isAuthenticated(commands))
        fetchPassword(commands);
    return isAuthenticated(commands);
}

void Authentication::deauthenticate()
{
    if (!_hasReference)
        return;
    services.giveUpRights();
    _hasReference = false;
    bus.post(Deauthenticated, { this });
}

bool Authentication::executeCommand(const QString &command, const QStringList &arguments,
                                    const CommandSubject &subject)
{
    if (!authenticate({ command }))
        return false;
    const int status = services.execute(
        command, arguments.first(std::min(arguments.size(), MostArguments)), subject);
    if (status != 0)
        beep(u"Error %1 in AuthorizationExecuteWithPrivileges"_s.arg(status));
    return status == 0;
}

int Authentication::getPID(const QString &processName)
{
    const bool plain = isPlain(processName);
    QByteArray output;
    const ProgramAttention reader { .line = [&](const QByteArray &line) {
        if (plain || line.contains(FileName::toBytes(processName)))
            output += line + '\n';
    } };
    // Without a shell, which would run what the name holds.
    const ProgramEnd end = plain
        ? programs.runShell(Ps + u' ' + Columns + u" | grep \""_s + processName + u'"', reader)
        : programs.runIn({}, { Ps, Columns }, reader);
    if (end.started)
        return processIn(asciiText(output), processName);
    beep(u"Error opening pipe: "_s + FileName::shown(processName));
    return 0;
}

bool Authentication::killProcess(const QString &processName)
{
    if (!isAuthenticated({ processName }))
        authenticate({ processName });
    const int process = getPID(processName);
    const QString id = QString::number(process);
    // Before anything is waited for: by then the number may be another one's.
    const auto start = startOfProcess(process);
    if (process < 1 || !start) {
        beep(u"Error killing process %1, invalid PID."_s.arg(id));
        return false;
    }
    if (!mayEnd(processName, process))
        return false;
    executeCommand(u"/bin/kill"_s, { id }, *start);
    return true;
}

// Shown is what would end: the name may stand in the command line of quite another process.
bool Authentication::mayEnd(const QString &processName, int process)
{
    QByteArray commandLine;
    programs.runIn({}, { Ps, u"-wwocommand="_s, u"-p"_s, QString::number(process) },
                   { .line = [&](const QByteArray &line) { commandLine += line; } });
    const QString details = filled(localized("Process %i:"), process) + u' '
        + FileName::shown(FileName::fromBytes(commandLine)).left(LongestShown);
    return alerts.ask(Alert::question(
               filled(localized("Are you sure that you want to end the process '%@'?"),
                      FileName::shown(processName)),
               details))
        == Alert::Yes;
}

void Authentication::beep(const QString &reason)
{
    QApplication::beep();
    qCWarning(log, "%s", qUtf8Printable(reason));
}
