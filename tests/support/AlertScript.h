#pragma once

#include "platform/Alerts.h"

#include <QMutex>
#include <QTest>

#include <atomic>
#include <functional>

// A person who answers by script: each alert takes the next answer, and an alert for which none is
// left fails the test. Any thread.
class AlertScript final : public Alerts {
public:
    ~AlertScript() override
    {
        if (!_answers.isEmpty())
            QTest::qFail("An expected alert did not appear", __FILE__, __LINE__);
    }

    void answer(Alert::Answer answer)
    {
        const QMutexLocker lock(&_mutex);
        _answers.append(answer);
    }
    void answer(const QList<Alert::Answer> &answers)
    {
        for (const Alert::Answer each : answers)
            answer(each);
    }
    Alert last() const { return shown().isEmpty() ? Alert() : shown().last(); }
    QList<Alert> shown() const
    {
        const QMutexLocker lock(&_mutex);
        return _shown;
    }

    Alert::Answer ask(const Alert &alert) override
    {
        const QMutexLocker lock(&_mutex);
        if (_silent)
            return alert.cancel;
        _shown.append(alert);
        if (decide)
            return decide(alert);
        if (_answers.isEmpty()) {
            qWarning("Unexpected alert: %s", qUtf8Printable(alert.text));
            QTest::qFail("Unexpected alert", __FILE__, __LINE__);
            return alert.cancel;
        }
        return _answers.takeFirst();
    }

    std::function<Alert::Answer(const Alert &)> decide; // takes the script's place

private:
    void setSilent(bool silent) override { _silent = silent; }

    mutable QMutex _mutex;
    std::atomic<bool> _silent { false }; // set by the main thread, read by any
    QList<Alert::Answer> _answers;
    QList<Alert> _shown;
};
