#pragma once

#include "files/FileStatus.h"

#include <QColor>
#include <QDateTime>
#include <QIcon>
#include <QStringList>

#include <atomic>
#include <optional>
#include <system_error>

class FileKinds;
class Waiting;
class Workspace;

// The questions the panes, sheets and operations ask about a path. A failure is never shown: it
// answers what holds for a path that is not there (no, "", or the path itself), and so does a
// question that was given up, but for those that answer nothing then: on them hangs what is done to
// files. Any thread unless said otherwise; every answer comes fresh from disk.
class FileQueries {
public:
    FileQueries(Workspace &workspace, const FileKinds &kinds, Waiting &waiting);

    // Whether attributes "as set" are those of a link's target. Set by the pane model.
    void setTraverseLinks(bool follow) { _traverseLinks = follow; }
    Links linksAsSet() const { return _traverseLinks ? Links::Follow : Links::NoFollow; }

    // What stands at the path itself, links not followed. Nothing when that was given up.
    struct Item {
        std::optional<FileStatus> status;
    };
    std::optional<Item> itemAt(const QString &path) const;
    bool isThere(const QString &path) const
    {
        return itemAt(path).value_or(Item()).status.has_value();
    }
    // Why the path leads to nothing, links followed; no error: something is there.
    std::error_code whyNotThere(const QString &path) const;
    // Whether both paths lead to one file or folder; see SameFile. Nothing when that was given up.
    std::optional<bool> isSameItem(const QString &a, const QString &b) const;
    // The path itself where it is a folder, readable or not; else the nearest one above it that
    // is. Nothing when that was given up.
    std::optional<QString> nearestFolder(const QString &path) const;
    // What decides about opening an item, looked at together. Nothing when that was given up.
    struct Opened {
        QString resolved; // as resolveAliasPath
        bool leadsToFolder; // isDirectory of what it resolves to
        bool isDirectory;
        bool isPackage;
        bool isApplication;
    };
    std::optional<Opened> lookAtOpened(const QString &path) const;

    bool isFileHidden(const QString &path) const;
    bool isDirectory(const QString &path) const; // a folder that is no package, links followed
    bool isPackage(const QString &path) const;
    // By its name, or as one that is installed on this machine.
    bool isApplication(const QString &path) const;
    bool isItemFolderOrOversized(const QString &path) const;
    bool isSymbolicLink(const QString &path) const;
    QString pathContentOfSymbolicLinkAtPath(const QString &path) const;
    QString getPathContentOfSymbolicLinkAtPath(const QString &path) const;
    bool isAlias(const QString &path) const;
    QString resolveAliasPath(const QString &path) const;
    int finderLabelColorOfPath(const QString &path) const;
    static int labelOfBits(int bits); // the 3-bit label field of the Finder flags
    static QColor finderLabelColor(int label);
    QString getFileType(const QString &path) const; // by the content of the file, too
    QString getApplicationForFile(const QString &path) const;
    QIcon
    getIconForFile(const QString &path) const; // main thread; any size, so no width and height
    QString getLocalizedPath(const QString &path) const;
    static QString getPathComponents(const QString &path, int toIndex);
    static QString getPathComponent(const QString &path, int fromIndex);
    QString getMountedLocalVolumePath(int index) const;
    bool isVolumeMounted(const QString &path) const;
    // Main thread. False: told to the user by the caller; `reason` gets why, as far as it is known.
    bool unmountVolume(const QString &path, QString *reason = nullptr) const;
    QDateTime getDateForFile(const QString &path) const; // invalid when the path has no attributes

    static bool isStringInSubstring(const QString &text, const QString &search,
                                    Qt::CaseSensitivity sensitivity = Qt::CaseSensitive);

private:
    Workspace &workspace;
    const FileKinds &kinds;
    Waiting &waiting;
    std::atomic<bool> _traverseLinks { true }; // set by the main thread, read by workers
};
