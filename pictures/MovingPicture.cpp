#include "pictures/MovingPicture.h"

#include "base/Arrivals.h"
#include "pictures/PictureDecoding.h"
#include "pictures/Thumbnails.h"

#include <QElapsedTimer>
#include <QFile>
#include <QImageReader>
#include <QTimerEvent>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace {

constexpr qint64 MostPixelsOfFrame = 16 * 1024 * 1024;
// Faster than that nobody means: files that say so are shown at the usual pace everywhere.
constexpr int LeastDelay = 20; // milliseconds
constexpr int UsualDelay = 100;
// A frame stays for this many times of what the next one costs, so that large ones leave the
// machine to others.
constexpr int Rest = 2;

std::atomic<int> underWay { 0 };

} // namespace

struct MovingPicture::Shared {
    struct Frame {
        QImage image;
        int delay; // milliseconds until the next one
    };

    std::mutex mutex; // for all below
    std::condition_variable change;
    std::optional<Frame> next; // decoded, and not shown yet
    bool isEnding = false;
    MovingPicture *receiver = nullptr;

    void read(const QString &path, const QSize &bound) // worker thread
    {
        const Descriptor descriptor = openedPicture(path);
        QFile file;
        if (!descriptor.isOpen()
            || !file.open(descriptor.number(), QIODevice::ReadOnly, QFileDevice::DontCloseHandle))
            return;
        const PictureKind kind = PictureKind::of(file.peek(PictureKind::StartLength));
        if (!kind.mayMove)
            return;
        for (int round = 0;; ++round) {
            file.seek(0);
            QImageReader reader(&file, kind.format);
            reader.setAutoDetectImageFormat(false);
            const QSize size = reader.size();
            if (qint64(size.width()) * size.height() > MostPixelsOfFrame)
                return;
            int frames = 0;
            QImage image;
            QElapsedTimer work;
            for (work.start(); reader.read(&image); work.start()) {
                const int stated = reader.nextImageDelay();
                const QImage scaled = scaledDown(image, bound);
                const int delay =
                    std::max(stated < LeastDelay ? UsualDelay : stated, Rest * int(work.elapsed()));
                // The first one is shown already.
                if ((++frames > 1 || round > 0) && !give({ scaled, delay }))
                    return;
            }
            const int loops = reader.loopCount();
            if (frames < 2 || (loops >= 0 && round >= loops))
                return;
        }
    }

    static QImage scaledDown(const QImage &image, const QSize &bound)
    {
        const bool isSmaller = image.width() <= bound.width() && image.height() <= bound.height();
        return bound.isEmpty() || isSmaller
            ? image.copy() // the reader goes on with its own
            : image.scaled(bound, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    }

    bool give(Frame frame) // worker thread
    {
        std::unique_lock lock(mutex);
        change.wait(lock, [this] { return isEnding || !next; });
        if (isEnding)
            return false;
        next = std::move(frame);
        QMetaObject::invokeMethod(
            receiver,
            [to = receiver] {
                if (to->_isDue)
                    Arrivals::deliver(to, [to] { to->showNext(); });
            },
            Qt::QueuedConnection);
        return true;
    }
};

MovingPicture::MovingPicture(const QString &path, const QSize &bound)
    : _shared(std::make_shared<Shared>())
{
    _shared->receiver = this;
    ++underWay;
    std::thread([shared = _shared, path, bound] { // worker thread
        shared->read(path, bound);
        --underWay;
    })
        .detach();
}

MovingPicture::~MovingPicture()
{
    const std::lock_guard lock(_shared->mutex);
    _shared->isEnding = true;
    _shared->change.notify_all();
}

bool MovingPicture::anyUnderWay()
{
    return underWay > 0;
}

void MovingPicture::setPlaying(bool playing)
{
    if (_playing == playing)
        return;
    _playing = playing;
    _isDue = false;
    if (playing)
        _timer.start(UsualDelay, this);
    else
        _timer.stop();
}

void MovingPicture::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != _timer.timerId())
        return QObject::timerEvent(event);
    _timer.stop();
    showNext();
}

void MovingPicture::showNext()
{
    std::optional<Shared::Frame> frame;
    {
        const std::lock_guard lock(_shared->mutex);
        frame.swap(_shared->next);
        _shared->change.notify_all();
    }
    _isDue = !frame.has_value();
    if (!frame || !_playing)
        return;
    _timer.start(frame->delay, this);
    Q_EMIT frameChanged(frame->image);
}
