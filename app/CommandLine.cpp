#include "app/CommandLine.h"

#include "base/Localized.h"
#include "files/DirectoryReader.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/PathText.h"

#include <cstdio>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace {

void complain(const QString &text)
{
    std::fprintf(stderr, "twinleaf: %s\n", text.toUtf8().constData());
}

// As typed in the folder the program was started in.
QString absolutePath(const char *argument)
{
    std::error_code error;
    const auto path = std::filesystem::absolute(argument, error);
    return PathText::normalized(FileName::fromBytes(path.c_str()));
}

} // namespace

MainModel::StartFolder startFolder(const QString &path)
{
    const auto status = fileStatus(path, Links::Follow);
    if (!status || status->kind != FileKind::Directory) {
        if (exists(path)) // also a dangling link: it stands in its folder
            return { PathText::parent(path), PathText::lastComponent(path) };
        complain(filled(localized("'%@' does not exist; the home folder is shown instead"),
                        FileName::shown(path)));
        return { PathText::homeFolder() };
    }
    DirectoryReader reader;
    if (const auto error = reader.open(path)) {
        complain(filled(localized("'%@' cannot be read (%@); the home folder is shown instead"),
                        FileName::shown(path), QString::fromStdString(error.message())));
        return { PathText::homeFolder() };
    }
    return { path };
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
            } else
                return { CommandLine::Task::Wrong,
                         filled(localized("unknown option '%@'; see --help"),
                                FileName::shown(FileName::fromBytes(argument))) };
        } else if (folders == 2) {
            return { CommandLine::Task::Wrong,
                     localized("more than two folders were given; see --help") };
        } else {
            line.folders[folders++ == 0 ? Side::Left : Side::Right] = absolutePath(arguments[i]);
        }
    }
    return line;
}
