#pragma once

#include "model/ProgressSheet.h"
#include "widgets/Sheet.h"

#include <QTimer>

class ElidedLabel;
class MenuTextButton;
class MessageBus;
class QLabel;
class QMenu;
class QProgressBar;

// How far a copy or move run has come. It stays up until the run closes it: Cancel only asks the
// run to stop. Main thread.
class WorkingSheet final : public Sheet, public ProgressSheet {
    Q_OBJECT

public:
    WorkingSheet(MessageBus &bus, QWidget *mainWindow);

    void showWorkingSheet() override;
    bool isWorkingSheetVisible() const override { return isUp(); }
    void closeWorkingSheet() override;
    void cancelWorkingSheet() override;
    void setWorkingSheetInfoText(const QString &text) override;
    void setWorkingSheetDetailText(const QString &text) override;
    void setWorkingSheetMaxProgressValue(double value) override;
    void setWorkingSheetProgressValue(double value) override;

    // What waits behind the run: how much, and the menu that cancels it.
    void setWaitingMenu(QMenu *menu);
    void setWaitingCount(int count);

protected:
    void reject() override; // Escape and the close box
    void accept() override { }

private:
    void standOverWindow();
    void questionAnswered();
    void showCounter();
    // Of a thousand small items a second each has its texts, but few of them are painted: the run
    // waits for every paint.
    void paintSoon();

    MessageBus &bus;
    ElidedLabel *workingInfoText;
    QLabel *_counter;
    QProgressBar *workingProgressIndicator;
    ElidedLabel *_details;
    QPushButton *_cancel; // disabled once the run is asked to stop
    MenuTextButton *_waiting;
    QTimer _paintPause;
};
