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
    static MountTable fromText(const QByteArray &mountinfo);

    const QList<Mount> &mounts() const { return _mounts; }

    // The mount that an absolute path lies on, by its text alone.
    const Mount *mountOf(const QString &path) const;

    // Types that answer from another machine: their server can be gone, and then every call hangs.
    static bool isNetwork(const Mount &mount);
    // Mounts a person thinks of as volumes: "/" and local disks, no pseudo, network or snap mounts.
    static bool isLocalVolume(const Mount &mount);

private:
    QList<Mount> _mounts;
};
