#pragma once

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QStringList>

class UserDefaults;

// What belongs to a search of the home folder, said once for the index and for the walk that
// answers while that is young.
//
// Every item that lies in a folder which is walked is known by its name: hidden ones too, links as
// themselves (never followed), and the folders that are not walked. Not walked are: a folder on
// another file system, or where one is mounted; one whose name begins with a dot; one that says by
// its CACHEDIR.TAG that what is in it can be made again; one of the list in the settings
// (Settings::SearchLeftOutFolders); and that of the index itself. The names in a ".hidden" file say
// what a person does not want to look at, not what they do not want to find: they make no
// difference. The home folder itself is walked whatever it is. Any thread.
class WalkRules final {
public:
    // An entry that has a slash is the path of a folder ("~" and what does not start with "/" lie
    // in the home folder), one without is the name of folders anywhere.
    explicit WalkRules(const QStringList &leftOut = {});
    static QStringList leftOutIn(const UserDefaults &defaults); // main thread
    // As a person stored them, for a program that writes no settings.
    static QStringList leftOutIn(const QString &settingsFile);

    // By its name alone: `parent` is the path of a folder that is walked, without a slash at its
    // end. Without looking at the disk.
    bool mayEnter(QByteArrayView parent, QByteArrayView name) const;

    // The home folder decides on which file system the walk is.
    void setHome(int folder);
    // The same of a folder that is open: it is on the file system of the home folder, and no other
    // is mounted there.
    bool isOnHomeDisk(int folder) const;
    // Where its status is known already.
    bool isOnHomeDisk(quint64 device, bool mountPoint) const
    {
        return device == _device && !mountPoint;
    }

    // To be asked when an item of this name was met in a folder: the mark takes its signature to
    // count. Never waits for a FIFO.
    static constexpr QByteArrayView CacheMark { "CACHEDIR.TAG" };
    static bool isMarkedAsCache(int folder);

private:
    QSet<QByteArray> _names;
    QList<QByteArray> _paths;
    quint64 _device = 0;
};
