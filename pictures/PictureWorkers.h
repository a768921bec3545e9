#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QSize>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

// Threads that do what is wanted now, the first first. What is wanted changes at any time: what has
// not been begun by then is forgotten. A thread that does not come back, from a server that is gone
// or a decoder that turns in circles, is left behind, and another takes its place. Main thread.
class PictureWorkers final : public QObject {
    Q_OBJECT

public:
    // Done beside the window; answers what is then to be done on the main thread.
    using Work = std::function<std::function<void()>()>;
    struct Key {
        quint64 id;
        QSize bound;
        friend bool operator==(const Key &, const Key &) = default;
    };
    struct Job {
        Key key; // those under way are not begun again
        Work work;
        std::function<void()> givenUp; // it takes too long; it may still come to its end later
    };
    static constexpr std::chrono::seconds Patience { 10 };

    explicit PictureWorkers(int threads, std::chrono::milliseconds patience = Patience);
    ~PictureWorkers() override;

    void want(std::vector<Job> jobs);

    // Before the program ends: nothing is begun any more, and nothing is answered. False when
    // threads do not come back.
    bool end(QDeadlineTimer deadline);

private:
    struct Shared;
    void giveUpSlow();

    const std::shared_ptr<Shared> _shared;
    const int _threads;
    const std::chrono::milliseconds _patience;
    QTimer _looks; // while anything is under way
};
