#include "widgets/PathIcons.h"

#include "files/DiskQuestions.h"
#include "files/FileStatus.h"

#include <QPointer>

#include <cerrno>

namespace {

struct Found {
    std::optional<FileStatus> status;
    int error = 0;
};

Found lookAt(const QString &path) // worker thread
{
    const auto status = fileStatus(path, Links::Follow);
    return { status, status ? 0 : errno };
}

PathIcons::State stateOf(const Found &found)
{
    using enum PathIcons::State;
    if (found.status)
        return There;
    return found.error == ENOENT || found.error == ENOTDIR ? Gone : Unknown;
}

} // namespace

PathIcons::PathIcons(DiskQuestions &diskQuestions, IconOf iconOf)
    : questions(diskQuestions)
    , _iconOf(std::move(iconOf))
{
}

PathIcons::Look PathIcons::look(const QString &path)
{
    if (const auto known = _looks.constFind(path); known != _looks.cend())
        return *known;
    questions.ask(
        path, [path] { return lookAt(path); },
        [icons = QPointer(this), path](const Found &found) {
            if (!icons)
                return;
            icons->_looks[path] = { stateOf(found),
                                    found.status ? icons->_iconOf(path, *found.status) : QIcon() };
            Q_EMIT icons->arrived(path);
        });
    return *_looks.insert(path, {});
}

void PathIcons::forget()
{
    _looks.clear();
}
