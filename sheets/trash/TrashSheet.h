#pragma once

#include "widgets/Sheet.h"

class ElidedLabel;
class QProgressBar;
class QPushButton;
class TrashModel;
class TrashTable;

// What lies in the Trash, and what can be done with it. While something is done it shows how far
// that is, and the way out is to cancel it.
class TrashSheet final : public Sheet {
    Q_OBJECT

public:
    TrashSheet(TrashModel &rows, QWidget *mainWindow);

    void showWorking(qsizetype items); // 0: no more
    void showProgress(qsizetype items);
    void showState(const QString &text);

    TrashTable *table; // outlets
    QPushButton *putBackButton;
    QPushButton *removeButton;
    QPushButton *emptyButton;

Q_SIGNALS:
    void cancelAsked();

protected:
    void reject() override; // Escape and the close box
    void showEvent(QShowEvent *event) override;

private:
    void enableButtons();

    QProgressBar *_progress;
    ElidedLabel *_state;
    QPushButton *_cancel;
    bool _working = false;
};
