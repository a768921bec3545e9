#include "files/FolderWalk.h"

#include "files/DirectoryReader.h"

#include <QList>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr double Block = 4096; // bytes

class Walk {
public:
    Walk(const std::atomic<bool> &stop, const std::function<void(qint64)> &visit)
        : _stop(stop)
        , _visit(visit)
    {
    }

    void folder(DirectoryReader &reader)
    {
        // The folders are entered when the list is closed: one open descriptor a level, and no
        // buffer.
        QList<QByteArray> folders;
        reader.read([&](const DirectoryItem &item) {
            if (item.type == DT_DIR)
                folders.append(item.name.toByteArray());
            else
                file(reader.descriptor(), item, folders);
            return !_stop;
        });
        for (const QByteArray &name : std::as_const(folders)) {
            if (_stop)
                return;
            DirectoryReader inner;
            if (!inner.openAt(reader.descriptor(), name))
                folder(inner);
        }
    }

private:
    void file(int descriptor, const DirectoryItem &item, QList<QByteArray> &folders)
    {
        struct statx status { };
        if (statx(descriptor, item.name.data(), AT_SYMLINK_NOFOLLOW | AT_STATX_DONT_SYNC,
                  STATX_TYPE | STATX_SIZE, &status)
            != 0)
            return;
        if (item.type == DT_UNKNOWN && S_ISDIR(status.stx_mode))
            folders.append(item.name.toByteArray());
        else
            _visit(qint64(status.stx_size));
    }

    const std::atomic<bool> &_stop;
    const std::function<void(qint64)> &_visit;
};

} // namespace

void walkFiles(const QString &folder, const std::atomic<bool> &stop,
               const std::function<void(qint64 size)> &visit)
{
    DirectoryReader reader;
    if (!reader.open(folder, Links::Follow))
        Walk(stop, visit).folder(reader);
}

double folderTotal(const QString &folder, const std::atomic<bool> &stop, std::atomic<qint64> *soFar)
{
    double total = 0;
    walkFiles(folder, stop, [&total, soFar](qint64 size) {
        // Kept: nothing is rounded to blocks; each file counts 4095 bytes more than it holds.
        total += (double(size) + Block - 1) * (1 / Block) * Block;
        if (soFar)
            soFar->store(qint64(total), std::memory_order_relaxed);
    });
    return total;
}
