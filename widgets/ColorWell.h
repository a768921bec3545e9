#pragma once

#include <QPushButton>

// A button that shows a colour and, pressed, lets a person choose another, with its opacity.
class ColorWell final : public QPushButton {
    Q_OBJECT

public:
    explicit ColorWell(QWidget *parent = nullptr);

    QColor color() const { return _color; }
    void setColor(const QColor &color);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void choose();

    QColor _color { Qt::black };
};
