#pragma once

#include "model/Messages.h"
#include "model/RowMatching.h"

#include <QObject>

class FileQueries;
class Launching;
class MainModel;
class PaneTable;
class PaneWindow;
class UserDefaults;
class Waiting;

// Selecting rows of the active pane: by letter, by name, by pattern, by what the other pane holds,
// and by search. Main thread.
class SelectionCommands final : public QObject {
    Q_OBJECT

public:
    // Shows the sheet with this title and answers what was chosen.
    using AskForPattern = std::function<ExpandSelection(const QString &title)>;

    SelectionCommands(PaneWindow &window, MessageBus &bus, const MainModel &mainModel,
                      const FileQueries &queries, Launching &launching, Waiting &waiting,
                      const UserDefaults &defaults, AskForPattern ask);
    ~SelectionCommands() override;

    void selectAllClicked();
    void selectSameClicked();
    void compareFoldersClicked();
    void groupSelectClicked();
    void groupDeselectClicked();
    void searchClicked(); // asks what for
    void searchNextClicked(); // asks only when nothing was searched for yet

    // The metadata search, as it was left or for the name of the selected item.
    void spotlightSearchClicked();
    void spotlightSearchMenuItemClicked();

    // Handlers of the bus.
    void letterPressed(const TypedLetter &typed);
    void spotlightSearchResultClicked(const ChosenResult &result);

private:
    RowMatching::DateToText dateText() const;
    static void show(PaneTable &list, int row);
    void group(bool select);
    void search();

    PaneWindow &window;
    MessageBus &bus;
    const MainModel &mainModel;
    const FileQueries &queries;
    Launching &launching;
    Waiting &waiting;
    const UserDefaults &defaults;
    const AskForPattern _askForPattern;
    QString _globalSearchString;
};
