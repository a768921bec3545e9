#pragma once

#include <QWidget>

class ElidedLabel;
class QCheckBox;
class QLineEdit;
class QPushButton;

// Where a person says what to search for, and reads how that goes on. Main thread.
class FindBar final : public QWidget {
    Q_OBJECT

public:
    // `marked`: gives a text a letter of its own in the sheet.
    FindBar(const std::function<QString(const QString &)> &marked, QWidget *parent);

    void takeKeyboard();
    void setAsBytes(bool asBytes); // what is to be typed
    void showState(const QString &text);

    // outlets
    QLineEdit *field;
    QCheckBox *ignoreCase;
    QPushButton *next;
    QPushButton *previous;
    ElidedLabel *state;

Q_SIGNALS:
    void nextAsked();
    void previousAsked();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
