#include "search/LocalMetadataQuery.h"

#include "base/Arrivals.h"

LocalMetadataQuery::LocalMetadataQuery(std::shared_ptr<SearchState> state)
    : _state(std::move(state))
{
    _state->setReceiver(this, [this] { Arrivals::deliver(this, [this] { takeNews(); }); });
}

LocalMetadataQuery::~LocalMetadataQuery()
{
    _found = {}; // so that the thread frees what it found, not the window
    _state->stop();
}

void LocalMetadataQuery::takeNews()
{
    SearchState::News news = _state->take(std::exchange(_found, {}));
    _found = std::move(news.found);
    // Whoever hears it may have done with the query: one signal, and nothing after it.
    if (news.finished)
        Q_EMIT queryDidFinish();
    else if (news.updated)
        Q_EMIT queryDidUpdate();
    else
        Q_EMIT queryProgress();
}
