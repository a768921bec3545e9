#pragma once

#include <QIcon>
#include <QObject>
#include <QStringList>

#include <memory>

class TrashCan;

// The programs of the Tools menu.
enum class Tool {
    Terminal,
    Console,
    ActivityMonitor,
    DiskUtility,
    Keychain,
    NetworkUtility,
    NetInfoManager,
    SystemProfiler
};

// The desktop's services: applications, Trash, volumes, and the end of the session.
class Workspace : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    // Starts an application by the path of its .desktop entry, AppDir or bundle, or an installed
    // program. This and what follows up to applicationForFile: any thread.
    virtual bool launchApplication(const QString &path) = 0;
    // Whether the path is an application of this machine's: a .desktop entry where the desktop
    // keeps them.
    virtual bool isInstalledApplication(const QString &path) const = 0;
    // The program that launching the item starts although nobody installed it (it came with a
    // download, say); empty when there is none.
    virtual QString foreignProgram(const QString &path) const = 0;
    // Opens a file with an application, or with its default one when `application` is empty.
    // A package as a whole is no file: without an application it is refused.
    virtual bool openFile(const QString &path, const QString &application = {}) = 0;
    // Opens an installer package with what the desktop installs packages with.
    virtual bool openInstallerPackage(const QString &path) = 0;
    // The full path of the application that opens the file; empty when there is none.
    virtual QString applicationForFile(const QString &path) const = 0;
    // The full path of the application that plain texts are edited with, whatever a file says it
    // is; empty when there is none. Any thread.
    virtual QString textEditor() const = 0;

    // What can open some files.
    struct FileApplications {
        struct Application {
            QString path;
            QString name;
        };
        QList<Application> all {}; // that can open each of them, the best known first
        QString standard {}; // the path of the one among these that opens them by default
        // How the desktop names their type, and what a person calls it; "" where they are of
        // several, or of none that is known.
        QString type {};
        QString kind {};
    };
    virtual FileApplications applicationsForFiles(const QStringList &paths) const = 0;
    // From now on files of the type are opened with the application. `reason` as below. Any thread.
    virtual bool setDefaultApplication(const QString &application, const QString &type,
                                       QString *reason = nullptr) = 0;
    // Starts the person's terminal in a folder. `reason` as below. Any thread.
    virtual bool openTerminal(const QString &folder, QString *reason = nullptr) = 0;

    // The installed application for a tool; empty when there is none.
    virtual QString applicationForTool(Tool tool) const = 0;
    virtual QIcon iconOfApplication(const QString &path) const = 0;
    // Opens the desktop's own window for searching files, with this text. False when there is none
    // or it cannot be started. Any thread.
    virtual bool showSearchWindow(const QString &text) = 0;
    // Whether the program that holds the clipboard answers soon; it may stand still. Not while that
    // is this one. Waits for it, for a second at most. Any thread.
    virtual bool clipboardAnswers() const = 0;
    // Opens a web or mail address in the person's browser or mail program.
    virtual bool openAddress(const QString &address) = 0;

    // Moves items of one folder to the Trash. What holds for all of them is looked at once. On one
    // thread.
    class TrashRun {
    public:
        TrashRun() = default;
        virtual ~TrashRun() = default;
        TrashRun(const TrashRun &) = delete;
        TrashRun &operator=(const TrashRun &) = delete;

        // Why the item would be refused, as a sentence for a person; "" when nothing speaks
        // against it.
        virtual QString refusal(const QString &name) = 0;
        // The same for an item that is to go for good: whether it is a volume, the home folder or
        // the Trash, or holds one of them.
        virtual QString refusalForGood(const QString &name) = 0;
        // As moveToTrash.
        virtual bool move(const QString &name, QString *reason) = 0;
    };
    virtual std::unique_ptr<TrashRun> trashRun(const QString &folder) = 0; // any thread

    // Moves one item to the Trash. "/", the home folder, a mount point, the Trash itself and what
    // lies in it are refused. Never removes for good. `reason` gets why it failed, as a sentence
    // for a person. `origin`: the place from which the Trash is to say that it came, when that is
    // not where it lies now. Any thread.
    virtual bool moveToTrash(const QString &path, QString *reason = nullptr,
                             const QString &origin = {}) = 0;

    // What lies in the Trash, and the ways out of it.
    virtual TrashCan &trashCan() = 0;

    // The mount points of the local volumes, "/" first. Any thread.
    virtual QStringList mountedLocalVolumePaths() const = 0;
    // Unmounts and ejects; waits, without freezing the window. Failure is the caller's to tell;
    // `reason` gets why, as a sentence for a person, "" where nobody says.
    virtual bool eject(const QString &volume, QString *reason = nullptr) = 0;
    // The folder under which volumes appear: /media/$USER or /run/media/$USER.
    virtual QString volumesFolder() const = 0;

Q_SIGNALS:
    void volumeDidMount();
    void volumeDidUnmount();
    void willPowerOff(); // the machine or the session ends: save what must be saved, at once
};
