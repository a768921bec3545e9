#include "window/FavoriteIcons.h"

#include "base/Arrivals.h"
#include "model/FileQueries.h"
#include "platform/Workspace.h"
#include "widgets/Icons.h"

using namespace Qt::StringLiterals;

FavoriteIcons::FavoriteIcons(const Workspace &desktop, const FileQueries &fileQueries)
    : workspace(desktop)
    , queries(fileQueries)
{
    _asking.setSingleShot(true);
    _asking.callOnTimeout(this, [this] { Arrivals::deliver(this, [this] { askForNext(); }); });
}

QIcon FavoriteIcons::icon(const QString &application)
{
    const auto known = _icons.constFind(application);
    if (known != _icons.cend())
        return *known;
    const QIcon general = themedIcon(u"application-x-executable"_s);
    _icons.insert(application, general);
    _wanted.append(application);
    _asking.start();
    return general;
}

void FavoriteIcons::forget()
{
    _icons.clear();
    _wanted.clear();
}

void FavoriteIcons::askForNext()
{
    if (_wanted.isEmpty())
        return;
    const QString application = _wanted.takeLast();
    const auto item = queries.itemAt(application);
    if (!item) // given up: nor would the others there answer
        _wanted.clear();
    else if (item->status) {
        _icons.insert(application, workspace.iconOfApplication(application));
        Q_EMIT arrived(application);
    }
    if (!_wanted.isEmpty())
        _asking.start();
}
