#include "window/FolderRefresh.h"

#include "base/Arrivals.h"
#include "model/CurrentRows.h"
#include "model/MainModel.h"
#include "model/PaneWindow.h"
#include "platform/OpenDialogs.h"

#include <QApplication>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto BetweenLooks = 50ms;
constexpr auto Quiet = 500ms; // after it news are shown at once again
// While an operation runs: most are over by then, and list the panes themselves.
constexpr auto MostHeldForWork = 2000ms;
// And then whatever is selected: a run can take hours.
constexpr auto MostHeldForSelection = 10'000ms;
constexpr qsizetype FewSelected = 100; // that are looked for among all
constexpr int AtOnce = 3; // news in a row that wait for nothing
constexpr int MostRest = 8; // times as long as showing the last took, in a folder that is busy

} // namespace

FolderRefresh::FolderRefresh(MainModel &model, PaneWindow &mainWindow, OpenDialogs &dialogs,
                             std::function<bool()> isWorkUnderWay)
    : mainModel(model)
    , window(mainWindow)
    , openDialogs(dialogs)
    , workUnderWay(std::move(isWorkUnderWay))
{
    connect(&mainModel, &MainModel::folderRead, this, &FolderRefresh::follow);
    _looks.setInterval(BetweenLooks);
    _looks.callOnTimeout(this, &FolderRefresh::showWhatMay);
}

FolderRefresh::~FolderRefresh()
{
    end();
}

bool FolderRefresh::end(QDeadlineTimer deadline)
{
    forget(Side::Left);
    forget(Side::Right);
    const bool left = _panes.left.readings.end(deadline);
    return _panes.right.readings.end(deadline) && left;
}

void FolderRefresh::forget(Side side)
{
    Pane &pane = _panes[side];
    pane.readings.drop();
    pane.news.reset();
    if (pane.follower)
        pane.follower->stop();
    pane.follower.reset();
}

void FolderRefresh::follow(Side side, const std::shared_ptr<FolderWatch> &watch)
{
    forget(side);
    if (!watch->isWatching())
        return;
    _panes[side].follower = std::make_shared<ListingFollower>(watch);
    _panes[side].inARow = 0;
    await(side, mainModel.wholeRows(side));
}

void FolderRefresh::await(Side side, const Listing &listing, const FolderWatch::Changes &changes)
{
    _panes[side].readings.start([follower = _panes[side].follower, listing,
                                 changes] { return follower->next(listing, changes); },
                                [this, side](ListingNews news) { take(side, std::move(news)); });
}

void FolderRefresh::take(Side side, ListingNews news)
{
    if (news.base == 0)
        return;
    _panes[side].news = std::move(news);
    _panes[side].held.start();
    showWhatMay();
}

void FolderRefresh::showWhatMay()
{
    bool anyHeld = false;
    for (const Side side : { Side::Left, Side::Right }) {
        if (_panes[side].news && mayShow(side))
            Arrivals::deliver(this, [this, side] { show(side); }); // at once: none is held
        anyHeld |= _panes[side].news.has_value();
    }
    if (!anyHeld)
        _looks.stop();
    else if (!_looks.isActive())
        _looks.start();
}

// The rows that a person answers about, points at or drags stay as they are.
bool FolderRefresh::mayShow(Side side) const
{
    if (Arrivals::areHeld() || openDialogs.anyOpen() || QApplication::activePopupWidget()
        || QGuiApplication::mouseButtons() != Qt::NoButton
        || window.getTableView(side).isPointedAt()) // by a drag that another program began, too
        return false;
    // An operation ends with the rows of its own, and with the selection where its items were.
    const Pane &pane = _panes[side];
    return !workUnderWay() || pane.held.hasExpired(MostHeldForSelection.count())
        || (pane.held.hasExpired(MostHeldForWork.count()) && !takesSelected(side, *pane.news));
}

// Whether a selected row would go; also where finding out takes long.
bool FolderRefresh::takesSelected(Side side, const ListingNews &news) const
{
    const ShownRows shown { .selected = window.getTableView(side).selectedRows() };
    if (shown.selected.isEmpty())
        return false;
    const Listing &rows = mainModel.rows(side);
    if (news.rows && news.base == rows.generation())
        return news.rows->rowsNow(shown).selected.size() < shown.selected.size();
    return shown.selected.size() > FewSelected
        || currentRows(shown.selected, rows, news.listing).size() < shown.selected.size();
}

void FolderRefresh::show(Side side)
{
    Pane &pane = _panes[side];
    const ListingNews news = *std::exchange(pane.news, std::nullopt);
    if (news.isGone) {
        forget(side);
        mainModel.showFolder(side, { .path = mainModel.folder(side) });
        return;
    }
    const Listing before = mainModel.wholeRows(side);
    if (before.generation() != news.base) // sorted meanwhile: the same once more
        return await(side, before, news.changes);
    if (news.watch != pane.follower->watch())
        pane.follower = news.watch->isWatching()
            ? std::make_shared<ListingFollower>(news.watch, *pane.follower)
            : nullptr;
    // The next is made ready beside the window.
    const auto follower = pane.follower;
    if (follower)
        await(side, news.listing);
    const bool isQuiet = !pane.shown.isValid() || pane.shown.hasExpired(Quiet.count());
    pane.inARow = isQuiet ? 1 : pane.inARow + 1;
    QElapsedTimer cost;
    cost.start();
    mainModel.updateRows(side, news.listing, news.rows);
    pane.shown.start();
    if (follower)
        follower->restFor(std::chrono::milliseconds(cost.elapsed() + 1)
                          * std::clamp(2 * (pane.inARow - AtOnce), 0, MostRest));
}
