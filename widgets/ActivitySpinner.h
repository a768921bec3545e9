#pragma once

#include <QBasicTimer>
#include <QWidget>

// Turns while file operations run. Each start needs its stop; at rest it is empty but keeps its
// place. Main thread.
class ActivitySpinner final : public QWidget {
    Q_OBJECT

public:
    explicit ActivitySpinner(QWidget *parent = nullptr);

    void start();
    void stop();
    bool isSpinning() const { return _running > 0; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    QBasicTimer _timer;
    int _running = 0;
    int _step = 0;
};
