#include "search/LiveSearch.h"

#include "files/FileName.h"
#include "search/HitCheck.h"
#include "search/IndexReader.h"
#include "search/NameWalk.h"
#include "search/VanishedItems.h"

#include <QElapsedTimer>

using namespace std::chrono_literals;
using Event = SearchState::Event;

namespace {

constexpr auto Tick = 250ms;
constexpr auto FirstPortion = 15ms; // each next one is twice as long in the making
constexpr auto LongestPortion = 500ms;
// Of the time, the share that may go into answering anew while the index is being written, and into
// walking over and over where it has not all names.
constexpr int RestsAfterRound = 4;
constexpr int RestsAfterWalk = 20;
constexpr auto LeastRest = 1s;
constexpr auto LeastRestOfWalks = 5s;

class Searching {
public:
    Searching(const LiveSearch &search, SearchState &state)
        : _search(search)
        , _state(state)
        , _match(search.query)
        , _index(search.index, state.stopped())
    {
    }

    void run()
    {
        round();
        publish(Event::Finish);
        while (_state.wait(Tick)) {
            const bool wasComplete = _complete;
            _found.drop(_vanished.look());
            if (isStale())
                round();
            if (_found.hasNews() || _complete != wasComplete)
                publish(Event::Update);
        }
    }

private:
    // Everything that is known now.
    void round()
    {
        QElapsedTimer time;
        time.start();
        _found.nextRound();
        _portion = FirstPortion;
        _sincePortion.start();
        const bool byIndex = searchIndex();
        _hasAllNames = byIndex && _index.hasAllNames();
        const bool walks = !_hasAllNames && _restOfWalks.hasExpired();
        if (walks)
            walk();
        if (_state.stopped())
            return;
        _found.dropOthers(!_hasAllNames && !walks);
        _isFirst = false;
        const auto took = std::chrono::milliseconds(time.elapsed());
        _rest =
            QDeadlineTimer(std::max<std::chrono::milliseconds>(LeastRest, took * RestsAfterRound));
        if (walks)
            _restOfWalks = QDeadlineTimer(
                std::max<std::chrono::milliseconds>(LeastRestOfWalks, took * RestsAfterWalk));
    }

    bool isStale()
    {
        return (!_hasAllNames && _restOfWalks.hasExpired())
            || (_rest.hasExpired() && _index.hasChanged());
    }

    bool searchIndex()
    {
        _complete = false;
        if (!_index.begin())
            return false;
        HitCheck check;
        _index.findNames(_match, [&](const QByteArray &folder, QByteArrayView name) {
            if (check.exists(folder, name))
                take(folder, name, FoundItems::By::Index);
        });
        progress();
        _index.findDocuments(
            _search.query, _match,
            [&](const QByteArray &folder, QByteArrayView name, const PackedItem::Stamp &stamp) {
                if (check.isUnchanged(folder, name, stamp))
                    take(folder, name, FoundItems::By::Index);
            });
        const bool failed = _index.failed();
        _complete = _index.hasAll() && !failed;
        _index.end();
        return !failed;
    }

    void walk()
    {
        progress();
        walkForNames(FileName::toBytes(IndexFile::homePath()), _search.rules, _match,
                     _state.stopped(), [this](const QByteArray &folder, QByteArrayView name) {
                         take(folder, name, FoundItems::By::Walk);
                     });
    }

    void take(const QByteArray &folder, QByteArrayView name, FoundItems::By by)
    {
        _found.add(folder, name, by);
        if (std::chrono::milliseconds(_sincePortion.elapsed()) >= _portion)
            progress();
    }

    // Later rounds show what they found when it is all, so that nothing flickers.
    void progress()
    {
        if (!_isFirst || !_found.hasNews())
            return;
        publish(Event::Progress);
        _portion = std::min<std::chrono::milliseconds>(_portion * 2, LongestPortion);
        _sincePortion.start();
    }

    void publish(Event event)
    {
        FoundItems::Snapshot found = _found.snapshot();
        found.complete = _complete;
        if (event != Event::Progress)
            _vanished.watch(found);
        _state.publish(std::move(found), event);
    }

    const LiveSearch &_search;
    SearchState &_state;
    const TextMatch _match;
    IndexReader _index;
    FoundItems _found;
    VanishedItems _vanished;
    QElapsedTimer _sincePortion;
    std::chrono::milliseconds _portion = FirstPortion;
    QDeadlineTimer _rest;
    QDeadlineTimer _restOfWalks;
    bool _isFirst = true;
    bool _hasAllNames = false;
    bool _complete = false;
};

} // namespace

void runSearch(const LiveSearch &search, const std::shared_ptr<SearchState> &state)
{
    Searching(search, *state).run();
}
