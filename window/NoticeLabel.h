#pragma once

#include <QLabel>
#include <QTimer>

// A line that stands over the lower edge of its window's content, for as long as something is
// waited for or for some seconds. It takes no room, no clicks and no keys.
class NoticeLabel final : public QLabel {
    Q_OBJECT

public:
    explicit NoticeLabel(QWidget *window);

    void show(const QString &line); // until another or hide()
    void tell(const QString &line); // for some seconds
    using QWidget::hide;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place();

    QString _line; // whole
    QTimer _end;
};
