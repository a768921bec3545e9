#pragma once

#include <QPointer>
#include <QToolBar>

class QToolButton;

// The bar of the main window, on the window's own background. Clicks leave the keyboard where it
// is; by keyboard the arrows go along the buttons, and Escape goes back. Main thread.
class UnifiedToolBar final : public QToolBar {
    Q_OBJECT

public:
    explicit UnifiedToolBar(QWidget *parent = nullptr);

    // An item that needs room and nothing else; a flexible one takes what the others leave.
    QAction *addSpace(bool flexible);
    // A separator stands between two items: the others are out of sight.
    void hideIdleSeparators();
    void takeKeyboard(); // to the first button that can be pressed
    void giveKeyboardBack(); // to where it was; when it is here

protected:
    void paintEvent(QPaintEvent *event) override;
    void actionEvent(QActionEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QList<QToolButton *> pressable() const; // from the left, the one for those without room last
    bool goAlong(QToolButton &from, int key);

    QPointer<QWidget> _before; // where the keyboard was
};
