#pragma once

#include <QToolButton>

// A line of text that opens its menu. Where the style would set a tiny mark into the corner, the
// text ends in one of its own size. Main thread.
class MenuTextButton final : public QToolButton {
    Q_OBJECT

public:
    explicit MenuTextButton(QWidget *parent);

    // "&" marks no key in it.
    void setPlainText(const QString &text);

protected:
    void paintEvent(QPaintEvent *event) override;
};
