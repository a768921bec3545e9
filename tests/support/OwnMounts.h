#pragma once

#include "files/FileName.h"
#include "tests/support/WithoutRights.h"

#include <QCoreApplication>
#include <QFile>
#include <QTest>

#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <unistd.h>

// Mounts of the test's own, which nobody else sees and which end with it: by root's rights, or in a
// user namespace where there are none. Of root's other rights it gives up those to read and write
// what is closed, so that root is refused what anybody is. Before there are threads.
inline void enterOwnMounts()
{
    const auto require = [](bool done, const char *what) {
        if (!done)
            qFatal(
                "No mounts for this test, neither by root's rights nor in a user namespace: %s: %s",
                what, std::strerror(errno));
    };
    const auto write = [&](const QString &file, const QByteArray &text) {
        QFile opened(QStringLiteral("/proc/self/") + file);
        require(opened.open(QIODevice::WriteOnly | QIODevice::Unbuffered)
                    && opened.write(text) == text.size(),
                qUtf8Printable(file));
    };
    const QByteArray user = QByteArray::number(geteuid());
    const QByteArray group = QByteArray::number(getegid());
    if (unshare(CLONE_NEWNS) != 0) {
        require(unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0, "unshare");
        // New rights hide what /proc shows of a process, its open folders among them, from the
        // programs it starts.
        require(prctl(PR_SET_DUMPABLE, 1, 0, 0, 0) == 0, "prctl");
        write(QStringLiteral("setgroups"), "deny");
        write(QStringLiteral("uid_map"), user + ' ' + user + " 1");
        write(QStringLiteral("gid_map"), group + ' ' + group + " 1");
    }
    require(mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0, "mount");
    require(giveUpRights(), "prctl"); // before anything is started
}

// A mount that goes at the end of its scope. What cannot be mounted fails the test.
class TestMount {
public:
    explicit TestMount(const QString &point)
        : _point(FileName::toBytes(point))
    {
    }
    ~TestMount() { umount2(_point, MNT_DETACH); }
    TestMount(const TestMount &) = delete;
    TestMount &operator=(const TestMount &) = delete;

    // Another, empty file system. `options` as for tmpfs: "size=64k".
    void fresh(const char *options) { require(mount("none", _point, "tmpfs", 0, options)); }
    void makeReadOnly()
    {
        require(mount(nullptr, _point, nullptr, MS_REMOUNT | MS_RDONLY, nullptr));
    }
    void show(const QString &folder)
    {
        require(mount(FileName::toBytes(folder), _point, nullptr, MS_BIND, nullptr));
    }

private:
    void require(int answer) const
    {
        if (answer != 0)
            qFatal("mount %s: %s", _point.constData(), std::strerror(errno));
    }

    QByteArray _point;
};

// In place of QTEST_GUILESS_MAIN.
#define TWINLEAF_MAIN_WITH_MOUNTS(Test)                                                            \
    int main(int argc, char **argv)                                                                \
    {                                                                                              \
        enterOwnMounts();                                                                          \
        const QCoreApplication application(argc, argv);                                            \
        Test test;                                                                                 \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
