#pragma once

#include "files/FileSystem.h"
#include "files/PathText.h"
#include "platform/AuthorizationServices.h"
#include "platform/OpenPanel.h"
#include "platform/TrashCan.h"
#include "platform/VersionServer.h"
#include "platform/Workspace.h"

#include <QHash>
#include <QMutex>

#include <functional>

using namespace Qt::StringLiterals;

// Nothing lies in it.
struct EmptyTrashCan final : TrashCan {
    QList<TrashedItem> items(QStringList *) override { return {}; }
    TrashEnd putBack(const TrashedItem &, Folders) override { return { TrashEnd::Failed }; }
    QList<TrashEnd> putBack(const QList<Gone> &items, Folders) override
    {
        return QList<TrashEnd>(items.size(), { TrashEnd::Failed });
    }
    TrashEnd remove(const TrashedItem &) override { return { TrashEnd::Failed }; }
};

// Another one, which may be exchanged.
struct ExchangedTrashCan final : TrashCan {
    explicit ExchangedTrashCan(TrashCan *const &trash)
        : can(trash)
    {
    }
    QList<TrashedItem> items(QStringList *unread) override { return can->items(unread); }
    TrashEnd putBack(const TrashedItem &item, Folders folders) override
    {
        return can->putBack(item, folders);
    }
    QList<TrashEnd> putBack(const QList<Gone> &items, Folders folders) override
    {
        return can->putBack(items, folders);
    }
    TrashEnd remove(const TrashedItem &item) override { return can->remove(item); }

private:
    TrashCan *const &can;
};

// Keeps what was asked of the desktop. Its Trash is a folder of the test's.
class RecordedWorkspace final : public Workspace {
public:
    bool launchApplication(const QString &path) override { return record({ u"launch"_s, path }); }
    bool isInstalledApplication(const QString &path) const override
    {
        return installed.contains(path);
    }
    QString foreignProgram(const QString &path) const override { return foreign.value(path); }
    bool openFile(const QString &path, const QString &application) override
    {
        return record({ u"open"_s, path, application });
    }
    bool openInstallerPackage(const QString &path) override
    {
        return record({ u"install"_s, path });
    }
    QString applicationForFile(const QString &) const override { return application; }
    QString textEditor() const override { return editor; }
    FileApplications applicationsForFiles(const QStringList &paths) const override // any thread
    {
        FileApplications found = applications;
        if (paths.size() > 1)
            found.type.clear();
        return found;
    }
    bool setDefaultApplication(const QString &path, const QString &type, QString *reason) override
    {
        if (reason)
            *reason = u"Read-only file system"_s;
        return record({ u"default"_s, path, type });
    }
    bool openTerminal(const QString &path, QString *reason) override
    {
        if (reason)
            *reason = u"Permission denied"_s;
        return record({ u"terminal"_s, path });
    }
    QString applicationForTool(Tool) const override { return application; }
    QIcon iconOfApplication(const QString &path) const override
    {
        iconLoads.append(path);
        return {};
    }
    bool showSearchWindow(const QString &text) override { return record({ u"search"_s, text }); }
    bool clipboardAnswers() const override { return isClipboardAnswered; }
    bool openAddress(const QString &address) override { return record({ u"address"_s, address }); }

    std::unique_ptr<TrashRun> trashRun(const QString &folder) override
    {
        struct Run final : TrashRun {
            Run(RecordedWorkspace &workspace, QString folder)
                : _workspace(workspace)
                , _folder(std::move(folder))
            {
            }
            QString refusal(const QString &name) override
            {
                return _workspace.refusals.value(PathText::joined(_folder, name));
            }
            QString refusalForGood(const QString &name) override { return refusal(name); }
            bool move(const QString &name, QString *reason) override
            {
                return _workspace.moveToTrash(PathText::joined(_folder, name), reason, {});
            }

        private:
            RecordedWorkspace &_workspace;
            QString _folder;
        };
        return std::make_unique<Run>(*this, folder);
    }
    bool moveToTrash(const QString &path, QString *reason,
                     const QString &origin) override // any thread
    {
        if (reason)
            *reason = u"The Trash is out of order."_s;
        const QMutexLocker lock(&_mutex);
        if (beforeTrash)
            beforeTrash();
        if (!trashWorks || trashFolder.isEmpty())
            return false;
        origins.append(origin);
        const QString place = PathText::joined(trashFolder, PathText::lastComponent(path));
        return !FileSystem::renameNoReplace(path, place)
            || !FileSystem::renameNoReplace(path, place + u'.' + QString::number(++_trashedAgain));
    }

    TrashCan &trashCan() override { return _shownTrash; }

    QStringList mountedLocalVolumePaths() const override { return volumes; }
    bool eject(const QString &volume, QString *reason) override
    {
        if (reason)
            *reason = u"The target is busy."_s;
        calls.append({ u"eject"_s, volume });
        if (whileEjecting)
            whileEjecting();
        return succeeds;
    }
    QString volumesFolder() const override { return u"/media/somebody"_s; }

    QList<QStringList> calls;
    bool succeeds = true;
    QStringList installed; // applications
    QHash<QString, QString> foreign; // programs, by what would start them
    mutable QStringList iconLoads; // of applications
    QString application;
    QString editor;
    bool isClipboardAnswered = true;
    FileApplications applications; // for any file
    QString trashFolder; // where things are moved to; "": it does not work
    EmptyTrashCan emptyTrash;
    TrashCan *trash = &emptyTrash; // what is seen of it
    QStringList origins; // of what went there
    bool trashWorks = true;
    QHash<QString, QString> refusals; // of the Trash, by path
    std::function<void()> beforeTrash;
    std::function<void()> whileEjecting;
    QStringList volumes { u"/"_s };

private:
    bool record(const QStringList &call)
    {
        calls.append(call);
        return succeeds;
    }

    ExchangedTrashCan _shownTrash { trash };
    QMutex _mutex;
    int _trashedAgain = 0;
};

// Chooses what the test tells it to, or nothing.
class RecordedOpenPanel final : public OpenPanel {
public:
    std::optional<QString> chooseApplication() override { return application; }
    std::optional<QString> chooseFolder(const QString &start) override
    {
        startFolder = start;
        return folder;
    }

    std::optional<QString> application;
    std::optional<QString> folder;
    QString startFolder; // of the last choice
};

// Answers at once what the test tells it to.
struct ScriptedVersionServer final : VersionServer {
    bool fetch(const QString &,
               const std::function<void(std::optional<QByteArray>)> &received) override
    {
        if (connects)
            received(answer);
        return connects;
    }
    bool connects = true;
    std::optional<QByteArray> answer;
};

// Holds the rights when the test says so, and runs nothing.
class RecordedAuthorization final : public AuthorizationServices {
public:
    bool holdsRights(const QStringList &commands) override
    {
        asked.append(commands);
        return holds;
    }
    bool askForRights(const QStringList &commands) override
    {
        asked.append(commands);
        if (whileAsking)
            whileAsking();
        holds = holds || personAgrees;
        return holds;
    }
    void giveUpRights() override { holds = false; }
    int execute(const QString &command, const QStringList &arguments,
                const CommandSubject &subject) override
    {
        executed.append(QStringList { command } + arguments);
        subjects.append(subject);
        return status;
    }

    bool holds = false;
    bool personAgrees = true;
    std::function<void()> whileAsking;
    int status = 0;
    QList<QStringList> asked; // the commands of each question, silent ones too
    QList<QStringList> executed;
    QList<CommandSubject> subjects; // of each of those
};
