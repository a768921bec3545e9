#pragma once

#include <QString>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <vector>

// How far a question has come: items read so far. Counted up by the job, shown while it is waited
// for.
using WaitingProgress = std::atomic<qint64>;

// What a person sees of a wait. Main thread.
class WaitingDisplay {
public:
    virtual ~WaitingDisplay() = default;

    virtual void showWaiting(const QString &text) = 0; // first, and with each new text
    // `told`: a line about what does not answer; "" when it has, or the person gave it up.
    virtual void endWaiting(bool answered, const QString &told) = 0;
};

// The one way of the window to ask the disk. The question is put on a thread of its own; the caller
// goes on when it is answered, as if it had asked by itself. Meanwhile, if that takes longer than a
// blink, the window paints and shows what it waits for, and what arrives is held. The person gives
// up with giveUp(), and a mount that does not answer is given up after a while.
class Waiting final {
public:
    Waiting() = default;
    ~Waiting();
    Waiting(const Waiting &) = delete;
    Waiting &operator=(const Waiting &) = delete;

    void setDisplay(WaitingDisplay *display) { _display = display; }

    // Runs `job()` or `job(progress)` about the path and answers its result, or nothing when it was
    // given up. The job may then come to its end much later, or never: what it needs it holds by
    // value, but for what lives as long as the process (with jobs left behind, that ends before any
    // of its objects). On a worker thread it just calls it.
    template <typename Job>
    auto forAnswer(const QString &path, Job job)
    {
        return ask<Job>({ path, {} }, std::move(job));
    }

    // The same for work that needs no disk: it always ends, nothing gives it up. `text` says what
    // it is.
    template <typename Job>
    auto forWork(const QString &text, Job job)
    {
        return *ask<Job>({ {}, text }, std::move(job));
    }

    // And for such work on many rows. For few it just calls it.
    template <typename Job>
    auto forRows(qsizetype rows, const QString &text, Job job)
    {
        constexpr qsizetype Few = 10'000; // done before anybody notices
        return rows <= Few ? job() : forWork(text, std::move(job));
    }

    bool isWaiting() const { return !_waits.empty(); }
    bool isShown() const; // that it waits: a person can mean to give it up
    void giveUp(); // each question under way; nothing when there is none

    // Whether threads still stand at a mount that never answered: they cannot be waited for, and
    // the program has to end without them. Main thread.
    static bool anyLost();

private:
    struct Subject {
        QString path; // "" for work
        QString text; // of work
    };
    struct Question;
    struct Wait;

    template <typename Job>
    auto ask(const Subject &subject, Job job)
    {
        constexpr bool counts = std::is_invocable_v<Job &, WaitingProgress &>;
        using Result =
            typename std::conditional_t<counts, std::invoke_result<Job, WaitingProgress &>,
                                        std::invoke_result<Job>>::type;
        auto answer = std::make_shared<std::optional<Result>>();
        const bool answered =
            isAnswered(subject, [answer, job = std::move(job)](WaitingProgress &progress) mutable {
                if constexpr (counts)
                    answer->emplace(job(progress));
                else
                    answer->emplace(job());
            });
        return answered ? std::move(*answer) : std::optional<Result>();
    }
    bool isAnswered(const Subject &subject, std::function<void(WaitingProgress &)> job);

    WaitingDisplay *_display = nullptr; // not owned
    std::vector<Wait *> _waits; // the innermost last
};
