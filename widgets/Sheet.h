#pragma once

#include <QDialog>

class QPushButton;
class QVBoxLayout;

// A dialog that belongs to the main window and stands over it: plain text, its buttons in a row at
// the bottom. Return takes the default button where there is one, Escape and the close box reject.
// Main thread.
class Sheet : public QDialog {
    Q_OBJECT

public:
    // Shows the sheet and returns when it was answered; true for the default button.
    bool run();

protected:
    explicit Sheet(QWidget *mainWindow);

    // What stands above the buttons.
    QVBoxLayout &rows() const { return *_rows; }
    // The buttons stand from left to right in the order they are added, the default one first.
    QPushButton *addButton(const QString &text);

private:
    QVBoxLayout *_rows;
    QLayout *_buttons;
};
