#pragma once

#include <QLabel>
#include <QTimer>

// A line that stands over the lower edge of its window's content, for as long as something is
// waited for or for some seconds. It takes no room, no clicks and no keys.
class NoticeLabel final : public QLabel {
    Q_OBJECT

public:
    explicit NoticeLabel(QWidget *window);

    void show(const QString &line); // until endShow(), over what was told
    void endShow(); // what was told is seen again, for the rest of its time
    void tell(const QString &line); // for some seconds
    void hide(); // whatever it says

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void put(const QString &line);
    void place();

    QString _line; // whole, as seen
    QString _told;
    bool _isShown = false; // between show() and endShow()
    QTimer _end;
};
