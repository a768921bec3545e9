#include "platform/desktop/SearchWindow.h"

#include "files/PathText.h"
#include "platform/desktop/InstalledApplications.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

// A program and how it takes what to search for: "%t" is the text, "%h" the home folder. A text
// that begins with a dash must not be taken for an option.
struct Tool {
    const char *program;
    QStringList arguments;
};

// Those that search in the contents first, then those that search by names.
const QList<Tool> &tools()
{
    static const QList<Tool> all {
        { "recoll", { u"-q"_s, u"%t"_s } },
        { "catfish", { u"--path=%h"_s, u"--start"_s, u"--"_s, u"%t"_s } },
        { "krunner", { u"--"_s, u"%t"_s } },
        { "mate-search-tool", { u"--path=%h"_s, u"--named=%t"_s, u"--start"_s } },
        { "gnome-search-tool", { u"--path=%h"_s, u"--named=%t"_s, u"--start"_s } },
        { "fsearch", { u"--search=%t"_s } },
    };
    return all;
}

QString filledIn(QString argument, const QString &text)
{
    return argument.contains("%h"_L1) ? argument.replace("%h"_L1, PathText::homeFolder())
                                      : argument.replace("%t"_L1, text);
}

} // namespace

bool SearchWindow::show(const QString &text)
{
    for (const Tool &tool : tools()) {
        const QString program = QStandardPaths::findExecutable(QString::fromLatin1(tool.program));
        if (program.isEmpty())
            continue;
        QStringList arguments;
        for (const QString &argument : tool.arguments)
            arguments.append(filledIn(argument, text));
        if (InstalledApplications::launch(program, arguments))
            return true;
    }
    return false;
}
