#include "model/ListingFollower.h"

#include "model/ListingChanges.h"
#include "model/ListingData.h"

#include <algorithm>

using namespace std::chrono_literals;

namespace {

// What happens above a folder, or is mounted over it, nobody tells.
constexpr auto BetweenLooksAtPath = 3000ms;
constexpr auto Look = 2ms; // between two looks at what came
constexpr auto LookWhileResting = 20ms; // it is not to be told yet
constexpr auto MostGathering = 20ms; // for as long as more comes: it is told together
constexpr auto BetweenStates = 300ms; // of items that are being written
// Programs replace a folder by removing it and making it anew.
constexpr auto UntilReplaced = 200ms;
constexpr int RestAfterReading = 3; // times as long as the reading took

bool isGone(const Listing &listing)
{
    return listing.error() == std::errc::no_such_file_or_directory
        || listing.error() == std::errc::not_a_directory;
}

// Whether it changes which other items are hidden.
bool changesRules(const Listing &listing, const FolderWatch::Changes &changes)
{
    return !listing.data().options.showHiddenFiles && changes.names.contains(".hidden");
}

// With so many, reading the folder is cheaper.
bool areMost(const Listing &listing, const FolderWatch::Changes &changes)
{
    return changes.names.size() > 1000 + listing.size() / 2;
}

} // namespace

void ListingFollower::restFor(std::chrono::milliseconds time)
{
    const Clock::duration until = (Clock::now() + time).time_since_epoch();
    Clock::duration known = _restUntil;
    while (known < until && !_restUntil.compare_exchange_weak(known, until)) { }
}

bool ListingFollower::leadsToWatched(const QString &folder) const // worker thread
{
    const auto status = fileStatus(folder, Links::Follow);
    return status && status->identity == _watch->folder();
}

// False when it was stopped.
bool ListingFollower::awaitChanges(const QString &folder,
                                   FolderWatch::Changes &changes) // worker thread
{
    while (changes.isEmpty()) {
        if (!_watch->wait(changes, BetweenLooksAtPath))
            return false;
        if (changes.isEmpty())
            changes.away = !leadsToWatched(folder);
    }
    const auto latest = Clock::now() + MostGathering;
    for (bool more = true;;) {
        Clock::time_point due { _restUntil.load() };
        if (!changes.items && !changes.lost && !changes.away)
            due = std::max(due, _lastNews + BetweenStates);
        const auto now = Clock::now();
        if (due <= now && (!more || latest <= now))
            return true;
        // Not by the queue: a file that is written to would wake this with each write.
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(due - now);
        const auto known = changes.names.size();
        if (!_watch->pause(std::clamp<std::chrono::milliseconds>(left, Look, LookWhileResting))
            || !_watch->wait(changes, 0ms))
            return false;
        more = changes.names.size() > known;
    }
}

ListingNews ListingFollower::readAnew(const Listing &listing) // worker thread
{
    const auto start = Clock::now();
    ListingNews news { .watch = std::make_shared<FolderWatch>() };
    news.listing = Listing::read(listing.folder(), listing.data().options, *listing.data().kinds,
                                 nullptr, news.watch.get());
    news.isGone = isGone(news.listing);
    if (const auto order = listing.order())
        news.listing = news.listing.sorted(order->column, order->direction);
    restFor(std::chrono::ceil<std::chrono::milliseconds>(Clock::now() - start) * RestAfterReading);
    return news;
}

ListingNews ListingFollower::next(const Listing &listing,
                                  FolderWatch::Changes changes) // worker thread
{
    ListingNews news;
    for (;;) {
        if (!awaitChanges(listing.folder(), changes))
            return {};
        std::optional<ChangedListing> changed;
        if (!changes.away && !changes.lost && !changesRules(listing, changes)
            && !areMost(listing, changes))
            changed = withChanges(listing, _watch->folder(), changes.names);
        if (!changed) {
            news = readAnew(listing);
            if (news.isGone) {
                if (!_watch->pause(UntilReplaced))
                    return {};
                news = readAnew(listing);
            }
            break;
        }
        if (!changed->rows.isEmpty()) {
            news = { .listing = changed->listing, .rows = changed->rows, .watch = _watch };
            break;
        }
        changes = {};
    }
    _lastNews = Clock::now();
    news.base = listing.generation();
    news.changes = std::move(changes);
    return news;
}
