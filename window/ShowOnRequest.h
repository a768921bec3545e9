#pragma once

#include "platform/ShowDesk.h"
#include "window/ItemsInPane.h"

#include <QObject>
#include <QTimer>

class InfoSheetController;
class OpenDialogs;
class PaneWindow;

// Shows in the panes what other programs ask for, as if the person had gone there: when no sheet,
// question, menu or held mouse button is in the way. What waits is overtaken by what comes later,
// but for sheets of information, which stand in a row. Main thread.
class ShowOnRequest final : public QObject, public ShowDesk {
    Q_OBJECT

public:
    ShowOnRequest(MainWindowLayout &mainWindow, PaneWindow &window, ItemsInPane &itemsInPane,
                  InfoSheetController &infoSheet, OpenDialogs &openDialogs, Waiting &waiting);

    void begin(); // the panes stand; what was asked for before is shown now
    void end(); // the program is about to end: nothing is shown any more

    void show(const ShowRequest &request) override;

private:
    bool keep(const ShowRequest &request); // false: there are too many
    void showWhatMay();
    bool mayShow() const;
    void perform(const ShowRequest &request);
    void tell(const QStringList &complaints) const;
    QStringList showPlaces(const ShowRequest &request);
    QStringList showItems(const QStringList &paths);
    QStringList showInformation(const QString &path);
    Side activeSide() const;
    QString whyMissing(const QString &path) const;

    MainWindowLayout &mainWindow;
    PaneWindow &window;
    ItemsInPane &itemsInPane;
    InfoSheetController &infoSheet;
    const OpenDialogs &openDialogs;
    Waiting &waiting;
    QList<ShowRequest> _held;
    QTimer _looks; // whether what is held may be shown
    bool _stands = false;
    bool _showing = false;
};
