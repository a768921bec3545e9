#pragma once

#include <QList>
#include <QString>

#include <optional>

// One line of /proc/self/mountinfo (see proc(5)).
struct Mount {
    quint64 device = 0; // as in FileIdentity
    QString root; // the part of the file system that is mounted here
    QString point; // where
    QString type; // "ext4", "nfs4", "fuse.sshfs", ...
    QString source;
};

// The mounts as the kernel lists them; reading the list touches no mounted file system. Any thread.
class MountTable {
public:
    static MountTable current();
    // What current() reads in place of the kernel's list. For tests, before there are threads.
    static void setSource(const QString &file);
    static MountTable fromText(const QByteArray &mountinfo);

    const QList<Mount> &mounts() const { return _mounts; }

    // The mount that an absolute path lies on, by its text alone; the topmost of several on a
    // point.
    const Mount *mountOf(const QString &path) const;

    // Whether something is mounted on the absolute path or below it, by the text alone.
    bool anyIn(const QString &path) const;

    // Whether the kernel alone answers for the mount and for the way to it. Another machine or a
    // program can be gone, and then every call hangs; a type that is not known counts as such.
    bool isLocal(const Mount &mount) const;
    bool hasSlow() const; // any mount that is not local

    // The mount that has to answer when something is asked about the path, links followed, and is
    // not local; nothing when there is none. Reads links on local disks, and asks no other.
    const Mount *slowMountOnTheWay(const QString &path) const;
    // The same from a folder on, which is there and no link.
    const Mount *slowMountOnTheWay(const QString &folder, const QString &path) const;

    // Mounts a person thinks of as volumes: "/", local disks, and whatever is mounted below the
    // folder of the volumes; no pseudo, network or snap mounts.
    static bool isVolume(const Mount &mount, const QString &volumesFolder);

private:
    QList<Mount> _mounts;
};
