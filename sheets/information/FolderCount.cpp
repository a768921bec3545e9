#include "sheets/information/FolderCount.h"

#include "files/FolderWalk.h"

namespace {

constexpr std::chrono::milliseconds BetweenLooks { 100 };

} // namespace

FolderCount::FolderCount()
{
    _looks.setInterval(BetweenLooks);
    _looks.callOnTimeout(this, [this] {
        if (const qint64 soFar = _sum->bytes; soFar > 0)
            Q_EMIT countedUp(soFar);
    });
}

FolderCount::~FolderCount()
{
    stop();
}

void FolderCount::start(const std::shared_ptr<const HeldItem> &folder)
{
    stop();
    _sum = std::make_shared<Sum>();
    _counting.start(
        [sum = _sum, folder] { // worker thread
            return qint64(folderTotal(folder->ownPath(), sum->stop, &sum->bytes));
        },
        [this](qint64 total) {
            stop();
            Q_EMIT counted(total);
        });
    _looks.start();
}

void FolderCount::stop()
{
    _looks.stop();
    _counting.drop();
    if (_sum)
        _sum->stop = true;
    _sum.reset();
}

bool FolderCount::end(QDeadlineTimer deadline)
{
    stop();
    return _counting.end(deadline);
}
