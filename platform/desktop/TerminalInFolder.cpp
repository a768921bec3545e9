#include "platform/desktop/TerminalInFolder.h"

#include "base/Localized.h"
#include "platform/desktop/GioTypes.h"
#include "platform/desktop/InstalledApplications.h"

namespace {

// A word of a command line without its field codes, which stand for files: here are none.
QByteArray withoutCodes(const QByteArray &word)
{
    QByteArray plain;
    for (qsizetype at = 0; at < word.size(); ++at) {
        if (word[at] != '%')
            plain += word[at];
        else if (++at < word.size() && word[at] == '%')
            plain += '%';
    }
    return plain;
}

// The words that start an application. Not by its name on the bus, even where it has one: the
// folder in which a program starts does not go that way.
QList<QByteArray> wordsOf(const QString &application)
{
    if (!InstalledApplications::isInstalledEntry(application))
        return { FileName::toBytes(application) };
    const Owned<GDesktopAppInfo> info(
        g_desktop_app_info_new_from_filename(FileName::toBytes(application).constData()));
    const char *line = info ? g_app_info_get_commandline(G_APP_INFO(info.get())) : nullptr;
    int count = 0;
    char **words = nullptr;
    if (!line || !g_shell_parse_argv(line, &count, &words, nullptr))
        return {};
    const std::unique_ptr<char *, decltype(&g_strfreev)> owned(words, &g_strfreev);
    QList<QByteArray> plain;
    for (int number = 0; number < count; ++number)
        if (const QByteArray word = withoutCodes(words[number]); !word.isEmpty())
            plain.append(word);
    return plain;
}

} // namespace

bool TerminalInFolder::open(const QString &folder, QString *reason)
{
    const QList<QByteArray> words = wordsOf(InstalledApplications::terminal());
    if (!words.isEmpty() && !words.first().isEmpty())
        return InstalledApplications::start(words, folder, reason);
    if (reason)
        *reason = localized("No terminal is installed.");
    return false;
}
