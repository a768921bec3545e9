#include "files/Waiting.h"

#include "base/Arrivals.h"
#include "base/Localized.h"
#include "base/MainThread.h"
#include "files/FileName.h"
#include "files/MountTable.h"
#include "files/PathText.h"

#include <QEventLoop>
#include <QLocale>
#include <QTimer>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>

using namespace std::chrono_literals;

namespace {

constexpr auto Blink = 20ms; // most disks answer sooner: the event loop is not turned for them
constexpr auto Look = 50ms; // between two looks at how far it is
constexpr auto QuietTime = 150ms; // before the window says that it waits
constexpr auto Patience = 3s; // with a mount that neither answers nor goes on

} // namespace

// What the main thread, the question's own and the one that finds its mount share.
struct Waiting::Question {
    WaitingProgress progress { 0 }; // counted by the job, read by the main thread

    void end() // the question's own thread
    {
        const std::lock_guard lock(_mutex);
        _ended = true;
        _change.notify_all();
        if (_wake)
            _wake();
    }
    bool endsWithin(std::chrono::milliseconds time)
    {
        std::unique_lock lock(_mutex);
        return _change.wait_for(lock, time, [this] { return _ended; });
    }
    void awaitEnd()
    {
        std::unique_lock lock(_mutex);
        _change.wait(lock, [this] { return _ended; });
    }
    bool hasEnded() { return endsWithin(0ms); }
    // Called once, under the lock: not after another one was set.
    void wakeBy(std::function<void()> wake)
    {
        const std::lock_guard lock(_mutex);
        _wake = std::move(wake);
        if (_ended && _wake)
            _wake();
    }
    void hangsOn(const QString &mountPoint) // a thread of its own
    {
        const std::lock_guard lock(_mutex);
        _mountPoint = mountPoint;
    }
    QString mountPoint() // "" while it is unknown, and for a local disk
    {
        const std::lock_guard lock(_mutex);
        return _mountPoint;
    }

    // Those that were given up and have not ended since; of the main thread.
    static std::vector<std::shared_ptr<Question>> &lost()
    {
        static std::vector<std::shared_ptr<Question>> questions;
        std::erase_if(questions, [](const auto &one) { return one->hasEnded(); });
        return questions;
    }
    bool isOnLostMount()
    {
        const QString point = mountPoint();
        return !point.isEmpty() && std::ranges::any_of(lost(), [&](const auto &one) {
            return one->mountPoint() == point;
        });
    }

private:
    std::mutex _mutex; // for all below
    std::condition_variable _change;
    bool _ended = false;
    std::function<void()> _wake;
    QString _mountPoint;
};

// One question that took longer than a blink.
struct Waiting::Wait {
    Question &question;
    const Subject &subject;
    QEventLoop loop {};
    bool fellSilent = false;
    std::chrono::milliseconds time = Blink; // since it was asked
    std::chrono::milliseconds silence = Blink; // since it last went on
    qint64 progress = 0;
    qint64 mostItems = 0; // some count them more than once
    QString shown {};

    void giveUp()
    {
        if (!subject.path.isEmpty())
            loop.quit();
    }
    void look()
    {
        time += Look;
        silence = progress == question.progress ? silence + Look : 0ms;
        progress = question.progress;
        mostItems = std::max(mostItems, progress);
        fellSilent =
            question.isOnLostMount() || (silence >= Patience && !question.mountPoint().isEmpty());
        if (fellSilent)
            giveUp();
    }
    QString name() const
    {
        const QString point = question.mountPoint();
        return FileName::shown(PathText::lastComponent(point.isEmpty() ? subject.path : point));
    }
    QString text() const
    {
        if (subject.path.isEmpty())
            return subject.text;
        const QString reading = filled(localized("Reading %@..."), name());
        return mostItems == 0
            ? reading
            : reading + u' ' + filled(localized("%@ items"), QLocale().toString(mostItems));
    }
};

Waiting::~Waiting() = default;

bool Waiting::isAnswered(const Subject &subject, std::function<void(WaitingProgress &)> job)
{
    if (!isMainThread()) {
        WaitingProgress progress { 0 };
        job(progress);
        return true;
    }
    const auto question = std::make_shared<Question>();
    std::thread([question, job = std::move(job)]() mutable { // worker thread
        job(question->progress);
        job = {}; // what it holds goes before anybody hears of the end
        question->end();
    })
        .detach();
    if (question->endsWithin(Blink))
        return true;

    if (!subject.path.isEmpty())
        std::thread([question, path = subject.path] { // worker thread
            const MountTable table = MountTable::current();
            if (const Mount *mount = table.slowMountOnTheWay(path))
                question->hangsOn(mount->point);
        })
            .detach();
    const Arrivals::Hold hold;
    Wait wait { *question, subject };
    _waits.push_back(&wait);
    question->wakeBy([&wait] {
        QMetaObject::invokeMethod(&wait.loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    QTimer looks;
    looks.callOnTimeout(&wait.loop, [this, &wait] {
        wait.look();
        const QString text = wait.text();
        if (_display && wait.time >= QuietTime && text != wait.shown)
            _display->showWaiting(wait.shown = text);
    });
    looks.start(Look);
    wait.loop.exec(); // ends at once when the program is about to end: then nobody wants to know
    question->wakeBy({});
    std::erase(_waits, &wait);
    if (subject.path.isEmpty())
        question->awaitEnd();
    const bool answered = question->hasEnded();
    if (!answered)
        Question::lost().push_back(question);
    if (!_waits.empty())
        _waits.back()->shown.clear(); // to be shown again
    if (_display)
        _display->endWaiting(answered,
                             answered || !wait.fellSilent
                                 ? QString()
                                 : filled(localized("'%@' does not answer."), wait.name()));
    return answered;
}

bool Waiting::isShown() const
{
    return std::ranges::any_of(_waits, [](const Wait *wait) { return !wait->shown.isEmpty(); });
}

void Waiting::giveUp()
{
    for (Wait *wait : _waits)
        wait->giveUp();
}

bool Waiting::anyLost()
{
    return !Question::lost().empty();
}
