#pragma once

#include "model/RunDisplay.h"

#include <QObject>
#include <QTimer>

class MainWindowLayout;
class QMenu;
class WorkingSheet;

// What is copied or moved and how many requests wait: a text beside the window's spinner, a menu
// that cancels them one by one, and the same menu in the sheet of the run. All three are there only
// while something runs, and not for a run that ends in the blink of an eye. Main thread.
class RunsIndicator final : public QObject, public RunDisplay {
    Q_OBJECT

public:
    RunsIndicator(MainWindowLayout &window, WorkingSheet &sheet);

    void showRuns(const QList<ShownRun> &runs) override;
    void showRunDetail(const QString &detail) override;

Q_SIGNALS:
    void cancelAsked(unsigned ticket);
    void cancelWaitingAsked();

private:
    void fillMenu();
    void update();

    MainWindowLayout &window;
    WorkingSheet &sheet;
    QMenu *_menu;
    QTimer _notAtOnce;
    QList<ShownRun> _runs;
    QString _detail;
};
