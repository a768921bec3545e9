#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <set>
#include <system_error>

class Staging;
struct FileStatus;

// Moves what lies in one open folder into another, without replacing anything: a file that is in
// the way goes to the Trash when the new one is in its place, a folder in the way takes the other's
// items in. By descriptors, and never through a link.
class Merge final {
public:
    // Moves an item to the Trash, as what came from another place.
    using ToTrash = std::function<bool(const QString &path, const QString &origin)>;

    // `staging`: beside the folder that items are moved to. `destination`: that folder's path.
    Merge(Staging &staging, QString destination, ToTrash toTrash);

    // Stops between two items when the person cancels. False when something had to stay; what, and
    // why, is told on standard error.
    bool moveAll(int from, int to);

    // Whether what stands at this relative path came from the other folder, by itself or in one of
    // its folders.
    bool hasMoved(const QByteArray &path) const;

private:
    struct Item {
        int from;
        int to;
        QByteArray name;
        QByteArray path; // relative to both folders
    };
    bool moveContents(int from, int to, const QByteArray &path);
    bool moveItem(const Item &item);
    bool moveFolder(const Item &item);
    bool replace(const Item &item);
    std::error_code takeName(const Item &item, const QByteArray &entry, QByteArray &old);
    void putBack(const Item &item, const QByteArray &old);
    void takeBack(const Item &item, const QByteArray &entry, const FileStatus &made);
    bool complain(const Item &item, const std::string &reason) const;
    void complainOfStaying(const Item &item) const;

    Staging &staging;
    QString _destination;
    ToTrash _toTrash;
    std::set<QByteArray> _moved;
};
