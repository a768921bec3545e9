#include "widgets/ApplicationIcons.h"

#include "files/DiskQuestions.h"
#include "files/FileStatus.h"
#include "platform/Workspace.h"
#include "widgets/Icons.h"

using namespace Qt::StringLiterals;

ApplicationIcons::ApplicationIcons(const Workspace &desktop, DiskQuestions &diskQuestions)
    : workspace(desktop)
    , questions(diskQuestions)
{
}

QIcon ApplicationIcons::icon(const QString &application)
{
    const auto known = _icons.constFind(application);
    if (known != _icons.cend())
        return *known;
    questions.ask(
        application, [application] { return fileStatus(application, Links::Follow).has_value(); },
        [this, application](bool isThere) {
            if (!isThere)
                return;
            _icons[application] = workspace.iconOfApplication(application);
            Q_EMIT arrived(application);
        });
    return *_icons.insert(application, themedIcon(u"application-x-executable"_s));
}

void ApplicationIcons::forget()
{
    _icons.clear();
}
