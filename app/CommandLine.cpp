#include "app/CommandLine.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/FileUrls.h"
#include "files/PathText.h"
#include "window/PathPlace.h"

#include <cstdio>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace {

constexpr int Panes = 2;

// As typed in the folder the program was started in; some launchers give an address. "" where that
// folder is gone, or nothing was typed.
QString absolutePath(const char *argument)
{
    if (QByteArrayView(argument).startsWith("file://"))
        if (const auto path = FileUrls::pathOf(argument))
            return *path;
    std::error_code error;
    const auto path = std::filesystem::absolute(argument, error);
    return PathText::normalized(FileName::fromBytes(path.c_str()));
}

} // namespace

void complain(const QString &text)
{
    std::fprintf(stderr, "twinleaf: %s\n", text.toUtf8().constData());
}

MainModel::StartFolder startFolder(const QString &path)
{
    const PathPlace place = placeOf(path);
    if (place.complaint.isEmpty())
        return { place.folder, place.selected };
    complain(filled(localized("%@; the home folder is shown instead"), place.complaint));
    return { PathText::homeFolder() };
}

QString usageText()
{
    return u"Usage: twinleaf [LEFT [RIGHT]]\n\n"_s
        + localized("Opens a window with two folders side by side. LEFT and RIGHT take the place\n"
                    "of the folders shown last; a file opens its folder with the file selected.")
        + u"\n\n  --help     "_s + localized("shows this text") + u"\n  --version  "_s
        + localized("shows the version") + u'\n';
}

CommandLine readCommandLine(int count, const char *const *arguments)
{
    CommandLine line;
    bool optionsEnded = false;
    int folders = 0;
    for (int i = 1; i < count; ++i) {
        const QByteArray argument(arguments[i]);
        if (!optionsEnded && argument == "--") {
            optionsEnded = true;
        } else if (!optionsEnded && argument.startsWith('-')) {
            if (argument == "--help" || argument == "-h")
                line.task = CommandLine::Task::Help;
            else if (argument == "--version")
                line.task = CommandLine::Task::Version;
            else if (argument == "--self-test") {
                if (line.task == CommandLine::Task::Run)
                    line.task = CommandLine::Task::SelfTest;
            } else if (argument == "--new-window") {
                return { CommandLine::Task::Wrong,
                         localized("there is one window only: --new-window is not offered") };
            } else {
                return { CommandLine::Task::Wrong,
                         filled(localized("unknown option '%@'; see --help"),
                                FileName::shown(FileName::fromBytes(argument))) };
            }
        } else if (++folders <= Panes) {
            const QString path = absolutePath(arguments[i]);
            if (path.isEmpty())
                return { CommandLine::Task::Wrong,
                         filled(localized("'%@' does not exist"),
                                FileName::shown(FileName::fromBytes(argument))) };
            line.folders[folders == 1 ? Side::Left : Side::Right] = path;
        }
    }
    if (folders > Panes)
        line.complaint = filled(localized("there are two panes; %i more folder(s) are not shown"),
                                folders - Panes);
    return line;
}
