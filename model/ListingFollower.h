#pragma once

#include "files/FolderWatch.h"
#include "model/Listing.h"
#include "model/RowChanges.h"

#include <atomic>
#include <chrono>
#include <memory>

// What became of the folder of a listing.
struct ListingNews {
    quint64 base = 0; // the generation of the listing; 0: nobody waits for news any more
    Listing listing; // the folder as it is now
    std::optional<RowChanges> rows; // what changed; nothing when it was read anew
    FolderWatch::Changes changes; // from which it was made
    std::shared_ptr<FolderWatch> watch; // by which it is followed from here on
    bool isGone = false; // the folder: there is nothing at its path any more
};

// Waits until a listed folder changes, and then makes the listing of what it is: soon where it is
// quiet, and many changes together where it is not.
class ListingFollower final {
public:
    explicit ListingFollower(std::shared_ptr<FolderWatch> watch)
        : _watch(std::move(watch))
    {
    }
    // Goes on by another watch; the earlier one waits for nothing any more.
    ListingFollower(std::shared_ptr<FolderWatch> watch, const ListingFollower &earlier)
        : _watch(std::move(watch))
        , _restUntil(earlier._restUntil.load())
        , _lastNews(earlier._lastNews)
    {
    }

    // One worker thread at a time. `changes`: known already, and not yet in the listing.
    ListingNews next(const Listing &listing, FolderWatch::Changes changes = {});

    const std::shared_ptr<FolderWatch> &watch() const { return _watch; }
    // Any thread.
    void restFor(std::chrono::milliseconds time); // no news before that is over
    void stop() { _watch->stop(); }

private:
    using Clock = std::chrono::steady_clock;

    bool awaitChanges(const QString &folder, FolderWatch::Changes &changes);
    bool leadsToWatched(const QString &folder) const;
    ListingNews readAnew(const Listing &listing);

    const std::shared_ptr<FolderWatch> _watch;
    std::atomic<Clock::duration> _restUntil { Clock::duration::zero() }; // since the clock's start
    Clock::time_point _lastNews; // the worker's
};
