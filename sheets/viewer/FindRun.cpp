#include "sheets/viewer/FindRun.h"

#include "base/Arrivals.h"
#include "texts/FileBytes.h"

namespace {

constexpr std::chrono::milliseconds BetweenLooks { 200 };

} // namespace

FindRun::FindRun()
{
    _looks.setInterval(BetweenLooks);
    _looks.callOnTimeout(this, [this] {
        Arrivals::deliver(this, [this] {
            if (_progress)
                Q_EMIT progressed(int(100.0 * double(_progress->done) / double(_progress->all)));
        });
    });
}

void FindRun::start(const std::shared_ptr<const FileBytes> &file, const SearchPattern &pattern,
                    qint64 from, FileSearch::Direction direction)
{
    stop();
    _progress = std::make_shared<FileSearch::Progress>();
    _looks.start();
    _readings.start(
        [file, pattern, from, direction, progress = _progress] { // worker thread
            return FileSearch::find(*file, pattern, from, direction, *progress);
        },
        [this](const FileSearch::Hit &hit) {
            _looks.stop();
            _progress.reset();
            Q_EMIT ended(hit);
        });
}

bool FindRun::stop()
{
    if (!_progress)
        return false;
    _progress->isCancelled = true;
    _progress.reset();
    _looks.stop();
    _readings.drop();
    return true;
}

bool FindRun::end(QDeadlineTimer deadline)
{
    stop();
    return _readings.end(deadline);
}
