#pragma once

#include "widgets/Sheet.h"

class ActivitySpinner;
class CommandField;
class ElidedLabel;
class OutputView;
class QLineEdit;

// The internal terminal: the current folder, what commands have printed, and a line for the next
// one.
class TerminalSheet final : public Sheet {
    Q_OBJECT

public:
    explicit TerminalSheet(QWidget *mainWindow);

    void showRunning(int count);
    void showEnd(const QString &line); // of the command that ended last

    QLineEdit *currentPathField; // outlets
    OutputView *output;
    CommandField *commandField;

Q_SIGNALS:
    void activeFolderAsked();
    void stopAsked();
    void deleteAsked();
    void resetAsked();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void copyOrStop();
    QPushButton *newButton(const QString &text);
    QWidget *newFolderLine();
    QWidget *newStateLine();

    ActivitySpinner *_spinner;
    ElidedLabel *_state;
    QPushButton *_stop = nullptr;
    QString _end;
    bool _spinning = false;
};
