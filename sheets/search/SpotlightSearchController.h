#pragma once

#include "model/Messages.h"
#include "sheets/search/SearchQuery.h"
#include "sheets/search/SearchResultModel.h"
#include "sheets/search/SpotlightSearchDetailsController.h"

#include <QObject>
#include <QTimer>

#include <memory>

class Alerts;
class OpenDialogs;
class SpotlightSearchSheet;
class UserDefaults;
class Waiting;
class Workspace;

// The metadata search: its query, what its sheet shows of it, and the result that is chosen. Main
// thread.
class SpotlightSearchController final : public QObject {
    Q_OBJECT

public:
    struct Services {
        MessageBus &bus;
        const UserDefaults &defaults;
        Alerts &alerts;
        OpenDialogs &openDialogs;
        Workspace &workspace;
        MetadataIndex &metadataIndex;
        Waiting &waiting;
    };
    struct Looks { // of the results
        const FileQueries &queries;
        const FileKinds &kinds;
        PathIcons &icons;
    };
    SpotlightSearchController(const Services &services, const Looks &looks, QWidget *mainWindow);
    ~SpotlightSearchController() override;

    // Handler of the bus.
    void showSpotlightSearchSheet(const SearchFor &search);
    // The query goes on: who comes back finds what it has found.
    void endSpotlightSearchSheet();

    void startSearch(); // for what stands in the field
    void killQuery();
    void showSpotlightSearchWindowClicked();
    void tableViewDoubleClicked();
    QString selectedItem() const; // "": none

    bool searchContent() const { return _options.searchContent; }
    void setSearchContent(bool on) { setOption(&SearchOptions::searchContent, on); }
    bool caseInsensitive() const { return _options.caseInsensitive; }
    void setCaseInsensitive(bool on) { setOption(&SearchOptions::caseInsensitive, on); }
    bool insensitiveToDiacriticalMarks() const { return _options.insensitiveToDiacriticalMarks; }
    void setInsensitiveToDiacriticalMarks(bool on)
    {
        setOption(&SearchOptions::insensitiveToDiacriticalMarks, on);
    }
    bool wordBased() const { return _options.wordBased; }
    void setWordBased(bool on) { setOption(&SearchOptions::wordBased, on); }

    bool end(QDeadlineTimer deadline); // false when a thread does not come back

Q_SIGNALS:
    void folderAsked(const QString &path); // the pane is to show where it lies

private:
    void makeSheet();
    void setOption(bool SearchOptions::*option, bool on); // the next search heeds it
    void updateData(); // handlers of the query
    void finishUpdate();
    void tabViewDidSelectTabViewItem(const QString &identifier);
    void paneLedAway(Side side, const FolderChange &change);
    void showDetailsPlaceholder();

    const Services _services;
    QWidget *mainWindow; // not owned
    PathIcons &icons;
    SearchOptions _options;
    std::unique_ptr<MetadataQuery> _query;
    SearchResultModel _results;
    SpotlightSearchDetailsController _details;
    std::unique_ptr<SpotlightSearchSheet> sheet; // from the first time on
    QTimer _typing; // until it is searched for
    bool _finished = false; // the query has found all that is known
    bool _choosing = false;
};
