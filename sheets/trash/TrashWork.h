#pragma once

#include "files/Readings.h"
#include "platform/TrashCan.h"

#include <QTimer>

#include <atomic>

// What is done with the Trash while its sheet is open, beside the window: one thing at a time, and
// cancelled between two items. Main thread.
class TrashWork final : public QObject {
    Q_OBJECT

public:
    explicit TrashWork(TrashCan &trash);

    // What happened to the items of one piece of work.
    struct End {
        qsizetype done = 0;
        QStringList failed {}; // a line each
        QList<TrashedItem> homeless {}; // the folders that they lay in are gone
    };
    struct Contents {
        QList<TrashedItem> items {};
        QStringList unread {}; // a line for each Trash that cannot be read
    };
    void list(const std::function<void(const Contents &)> &take);
    // The size of all, in bytes; nothing when it was cancelled.
    void count(const QList<TrashedItem> &items,
               const std::function<void(std::optional<qint64>)> &take);
    void putBack(const QList<TrashedItem> &items, TrashCan::Folders folders,
                 const std::function<void(const End &)> &take);
    void remove(const QList<TrashedItem> &items, const std::function<void(const End &)> &take);

    bool isWorking() const { return _shared != nullptr; }
    void cancel(); // what has begun with an item is done
    bool end(QDeadlineTimer deadline); // false when a thread does not come back

Q_SIGNALS:
    void workingChanged(qsizetype items); // 0: it has ended
    void progressed(qsizetype items);

private:
    // Shared with the thread, which may outlive this.
    struct Shared {
        std::atomic<bool> stop { false }; // set by the main thread
        std::atomic<qsizetype> done { 0 }; // read by it
    };
    std::shared_ptr<Shared> begin(qsizetype items);
    void ended();
    void run(const QList<TrashedItem> &items,
             const std::function<TrashEnd(const TrashedItem &)> &step,
             const std::function<void(const End &)> &take);

    TrashCan &trash; // outlives every thread
    std::shared_ptr<Shared> _shared; // while something is done
    QTimer _looks;
    Readings _listings;
    Readings _work;
};
