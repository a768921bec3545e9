#include "search/NameWalk.h"

#include "files/Descriptor.h"
#include "files/DirectoryReader.h"

#include <algorithm>
#include <condition_variable>
#include <dirent.h>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace {

// The folders that were met and not read yet. The last comes first, so that they stay few.
class Folders {
public:
    explicit Folders(QByteArray first)
        : _waiting { std::move(first) }
    {
    }

    // False when all is done, or stopped.
    bool next(QByteArray &folder, const std::atomic<bool> &stop)
    {
        std::unique_lock lock(_mutex);
        _changed.wait(lock, [&] { return !_waiting.empty() || _underWay == 0 || stop; });
        if (_waiting.empty() || stop) {
            _changed.notify_all();
            return false;
        }
        folder = std::move(_waiting.back());
        _waiting.pop_back();
        ++_underWay;
        return true;
    }
    // The one that was given out is done; these lie in it.
    void done(std::vector<QByteArray> &below)
    {
        const std::scoped_lock lock(_mutex);
        std::ranges::move(below, std::back_inserter(_waiting));
        --_underWay;
        _changed.notify_all();
    }

private:
    std::mutex _mutex;
    std::condition_variable _changed;
    std::vector<QByteArray> _waiting;
    int _underWay = 0;
};

QByteArray joined(const QByteArray &folder, QByteArrayView name)
{
    QByteArray path = folder;
    if (path.size() > 1)
        path += '/';
    return path.append(name);
}

class Walker {
public:
    Walker(const WalkRules &rules, const TextMatch &match)
        : _rules(rules)
        , _match(match)
    {
    }

    std::vector<QByteArray> below;
    std::vector<QByteArray> hits;

    void read(const QByteArray &path, bool isHome, const std::atomic<bool> &stop)
    {
        below.clear();
        hits.clear();
        const Descriptor folder(
            ::open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC | (isHome ? 0 : O_NOFOLLOW)));
        if (!folder.isOpen() || (!isHome && !_rules.isOnHomeDisk(folder.number())))
            return;
        bool mayBeCache = false;
        DirectoryReader::readOpen(folder.number(), [&](const DirectoryItem &item) {
            mayBeCache = mayBeCache || item.name == WalkRules::CacheMark;
            if (_match.matches(item.name))
                hits.push_back(item.name.toByteArray());
            if (isFolder(folder.number(), item) && _rules.mayEnter(path, item.name))
                below.push_back(joined(path, item.name));
            return !stop;
        });
        if (mayBeCache && !isHome && WalkRules::isMarkedAsCache(folder.number())) {
            below.clear();
            hits.clear();
        }
    }

private:
    static bool isFolder(int folder, const DirectoryItem &item)
    {
        if (item.type != DT_UNKNOWN)
            return item.type == DT_DIR;
        struct stat status { };
        return ::fstatat(folder, item.name.toByteArray(), &status, AT_SYMLINK_NOFOLLOW) == 0
            && S_ISDIR(status.st_mode);
    }

    const WalkRules &_rules;
    TextMatch _match; // has memory of its own
};

} // namespace

void walkForNames(const QByteArray &home, WalkRules rules, const TextMatch &match,
                  const std::atomic<bool> &stop, const TakeHit &take)
{
    rules.setHome(Descriptor(::open(home, O_PATH | O_DIRECTORY | O_CLOEXEC)).number());
    Folders folders(home);
    std::mutex taking;
    const auto walk = [&] {
        Walker walker(rules, match);
        for (QByteArray path; folders.next(path, stop); folders.done(walker.below)) {
            walker.read(path, path == home, stop);
            const std::scoped_lock lock(taking);
            for (const QByteArray &name : walker.hits)
                take(path, name);
        }
    };
    // The kernel's part is most of it; more threads than this stand in each other's way there.
    constexpr unsigned MostThreads = 4;
    const unsigned threads = std::clamp(std::thread::hardware_concurrency(), 1U, MostThreads);
    std::vector<std::jthread> others;
    for (unsigned i = 1; i < threads; ++i)
        others.emplace_back(walk);
    walk();
}
