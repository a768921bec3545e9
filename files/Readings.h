#pragma once

#include <QDeadlineTimer>
#include <QObject>

#include <chrono>
#include <functional>
#include <memory>

// Readings that nobody waits for, each on a thread of its own. Main thread.
class Readings final : public QObject {
    Q_OBJECT

public:
    // How answers come: in the order of what arrives at the main thread, or at once, also in the
    // middle of a wait: for a receiver that keeps them until nobody waits any more. Then
    // they do not make input wait for its turn.
    enum class Delivery { InOrder, AtOnce };
    explicit Readings(Delivery delivery = Delivery::InOrder)
        : _delivery(delivery)
    {
    }
    ~Readings() override;

    // `read` runs beside the window and holds by value what it needs; `take` gets what it answers,
    // on the main thread, unless drop() came first.
    template <typename Read, typename Take>
    void start(Read read, Take take)
    {
        using Result = std::invoke_result_t<Read &>;
        const auto result = std::make_shared<Result>();
        run([result, read = std::move(read)]() mutable { *result = read(); },
            [result, take = std::move(take)] { take(std::move(*result)); });
    }
    // Nobody wants the answers of those under way any more.
    void drop();
    bool anyWanted() const;

    // Before the program ends. False when a thread does not come back from a server that is gone.
    static constexpr std::chrono::seconds Patience { 1 };
    bool end(QDeadlineTimer deadline = QDeadlineTimer(Patience));

private:
    void run(std::function<void()> read, std::function<void()> take);

    const Delivery _delivery;
    std::shared_ptr<bool> _wanted = std::make_shared<bool>(true); // those started since drop()
    int _underWay = 0; // of these
};
