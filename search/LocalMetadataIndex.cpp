#include "search/LocalMetadataIndex.h"

#include "search/IndexerProcess.h"
#include "search/IndexFile.h"
#include "search/ItemAttributes.h"
#include "search/LiveSearch.h"
#include "search/LocalMetadataQuery.h"
#include "search/SearchState.h"
#include "search/WalkRules.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(searchLog, "twinleaf.search", QtWarningMsg)

LocalMetadataIndex::LocalMetadataIndex(const UserDefaults &defaults, IndexerProcess *indexer)
    : _defaults(defaults)
    , _indexer(indexer)
{
}

LocalMetadataIndex::~LocalMetadataIndex()
{
    end();
}

void LocalMetadataIndex::keepUp()
{
    if (!_indexer)
        return;
    _threads.start([] { return IndexFile::identity(IndexFile::path()).has_value(); },
                   [this](bool isThere) {
                       if (isThere)
                           _indexer->start();
                   });
}

std::unique_ptr<MetadataQuery> LocalMetadataIndex::execute(const MetadataSearch &search)
{
    const auto state = std::make_shared<SearchState>();
    auto query = std::make_unique<LocalMetadataQuery>(state);
    const auto read = QueryText::read(search);
    if (!read) {
        qCWarning(searchLog) << "Not a query of" << search.text << ':' << search.query;
        state->publish({}, SearchState::Event::Finish);
        return query;
    }
    if (_indexer)
        _indexer->start();
    std::erase_if(_states, [](const auto &known) { return known.expired(); });
    _states.push_back(state);
    const LiveSearch live { IndexFile::path(), *read, WalkRules(WalkRules::leftOutIn(_defaults)) };
    _threads.start(
        [live, state] {
            runSearch(live, state);
            return true;
        },
        [](bool) {});
    return query;
}

QList<MetadataAttribute> LocalMetadataIndex::attributesOf(const QString &path)
{
    return itemAttributes(path, IndexFile::path());
}

bool LocalMetadataIndex::end()
{
    for (const auto &known : _states) {
        if (const auto state = known.lock())
            state->stop();
    }
    _states.clear();
    return _threads.end();
}
