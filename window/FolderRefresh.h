#pragma once

#include "files/Readings.h"
#include "model/ListingFollower.h"
#include "model/Side.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>

class MainModel;
class OpenDialogs;
class PaneWindow;

// Shows in the panes what changes on the disk: by itself, but never under an open question, menu or
// held mouse button. Mounts on which the system tells of no changes are left to the person's
// reload. Main thread.
class FolderRefresh final : public QObject {
    Q_OBJECT

public:
    // `workUnderWay`: whether a file operation of the program's own runs.
    FolderRefresh(MainModel &mainModel, PaneWindow &window, OpenDialogs &openDialogs,
                  std::function<bool()> workUnderWay);
    ~FolderRefresh() override;

    // Follows the folder that a pane was just given, by the watch it was read with.
    void follow(Side side, const std::shared_ptr<FolderWatch> &watch);

    // Whether something is to be shown as soon as it may.
    bool holdsBack(Side side) const { return _panes[side].news.has_value(); }

    // Gives up waiting; false when a thread does not come back from a disk that is gone.
    bool end(QDeadlineTimer deadline = QDeadlineTimer(Readings::Patience));

private:
    struct Pane {
        std::shared_ptr<ListingFollower> follower;
        Readings readings { Readings::Delivery::AtOnce };
        std::optional<ListingNews> news; // held back
        QElapsedTimer held;
        int inARow = 0; // news without a pause between
        QElapsedTimer shown;
    };

    void forget(Side side);
    void await(Side side, const Listing &listing, const FolderWatch::Changes &changes = {});
    void take(Side side, ListingNews news);
    void showWhatMay();
    bool mayShow(Side side) const;
    bool takesSelected(Side side, const ListingNews &news) const;
    void show(Side side);

    MainModel &mainModel;
    PaneWindow &window;
    const OpenDialogs &openDialogs;
    const std::function<bool()> workUnderWay;
    PerSide<Pane> _panes;
    QTimer _looks; // whether what is held back may be shown
};
