#pragma once

#include <QLineEdit>

// One line of text that can be scrolled and copied. What does not fit is left out in its middle
// until the keyboard is on it. Main thread.
class TextField final : public QLineEdit {
    Q_OBJECT

public:
    TextField(const QString &name, QWidget *parent);

    void showText(const QString &text); // plain; names in it are made fit to be shown
    void setTextColor(const QColor &color); // invalid: as other texts

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool isCut() const;
    QRect textArea() const;
};
