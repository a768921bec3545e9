#pragma once

#include <QApplication>
#include <QDeadlineTimer>
#include <QTest>
#include <QTimer>

#include <functional>

// Acts on the sheet that opens next, while the context lives. Not merely when the event loop turns
// next: it turns earlier, too, while the window waits for a disk that takes its time.
inline void whenSheetOpens(QObject &context, std::function<void(QWidget &)> act,
                           QDeadlineTimer latest = QDeadlineTimer(5'000))
{
    QTimer::singleShot(0, &context, [&context, act = std::move(act), latest] {
        if (QWidget *sheet = QApplication::activeModalWidget())
            act(*sheet);
        else if (latest.hasExpired())
            QTest::qFail("The expected sheet did not open", __FILE__, __LINE__);
        else
            whenSheetOpens(context, act, latest);
    });
}
