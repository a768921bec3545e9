#pragma once

#include "base/MainThread.h"
#include "files/MountTable.h"
#include "files/Waiting.h"
#include "tests/support/Watched.h"
#include "tests/support/World.h"
#include "window/NoticeLabel.h"

#include <condition_variable>
#include <mutex>

// A disk that stops answering for a path and what lies below it, and answers late or never. It
// notes who is asked on the main thread.
class Disk final {
public:
    Disk()
        : _watch([this](Call call, const char *name, unsigned) { return note(call, name); })
    {
    }
    ~Disk()
    {
        answer();
        while (Waiting::anyLost())
            QCoreApplication::processEvents();
    }
    void stopAt(const QString &path)
    {
        const std::lock_guard lock(_mutex);
        _stopped = FileName::toBytes(path);
    }
    void answer()
    {
        const std::lock_guard lock(_mutex);
        _stopped.clear();
        _change.notify_all();
    }
    QByteArrayList askedByWindow; // of the main thread
    QByteArrayList asked()
    {
        const std::lock_guard lock(_mutex);
        return _asked;
    }

private:
    int note(Call call, const char *name)
    {
        if (call != Call::Status && call != Call::Open && call != Call::Attributes)
            return 0;
        if (isMainThread())
            askedByWindow.append(name);
        std::unique_lock lock(_mutex);
        _asked.append(name);
        _change.wait(
            lock, [&] { return _stopped.isEmpty() || !QByteArrayView(name).startsWith(_stopped); });
        return 0;
    }

    std::mutex _mutex;
    std::condition_variable _change;
    QByteArray _stopped;
    QByteArrayList _asked;
    const Watched _watch;
};

// Runs while the window waits for the disk, in its own event loop.
inline void whileWaiting(World &world, const std::function<void()> &work)
{
    QTimer::singleShot(0, &world.window, [&world, work] {
        QVERIFY(world.application.waiting().isWaiting());
        work();
    });
}

inline void press(World &world, std::initializer_list<Qt::Key> keys)
{
    for (const Qt::Key key : keys)
        QTest::keyClick(&world.list(), key);
}

inline QString notice(World &world)
{
    return world.window.notice->isVisible() ? world.window.notice->accessibleName() : QString();
}

// Makes a folder of the world look like a mount of another machine.
inline void mountServer(World &world, const QString &name)
{
    world.folder.write(u"mounts"_s,
                       "1 1 8:1 / / rw - ext4 /dev/sda1 rw\n2 1 0:9 / "
                           + world.folder.pathInMountTable(name) + " rw - new.type s rw\n");
    MountTable::setSource(world.folder.path(u"mounts"_s));
}

inline constexpr auto Tree = "left/slow/a=a, left/slow/b=b, left/slow/c=c";
