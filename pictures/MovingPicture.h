#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QImage>
#include <QObject>

#include <memory>

// Plays the pictures of an animated file. They are decoded beside the window, one ahead of what is
// seen. Main thread.
class MovingPicture final : public QObject {
    Q_OBJECT

public:
    // `bound`: as large as they need to be, at most.
    MovingPicture(const QString &path, const QSize &bound);
    ~MovingPicture() override;

    void setPlaying(bool playing);

    // Whether a thread is still at one: it may never come back.
    static bool anyUnderWay();

Q_SIGNALS:
    void frameChanged(const QImage &frame); // from the second one on

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    struct Shared;
    void showNext();

    const std::shared_ptr<Shared> _shared;
    QBasicTimer _timer; // runs out when the shown one has been seen for long enough
    bool _playing = false;
    bool _isDue = false; // the next one, as soon as it is there
};
