#pragma once

#include <QLabel>

// One line of plain text that gives way when there is no room.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(Qt::TextElideMode mode, QWidget *parent = nullptr);

    QSize minimumSizeHint() const override { return { 20, QLabel::minimumSizeHint().height() }; }

protected:
    void paintEvent(QPaintEvent *event) override;
    virtual QColor textColor() const { return palette().color(foregroundRole()); }

private:
    const Qt::TextElideMode _mode;
};
