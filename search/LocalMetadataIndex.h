#pragma once

#include "files/Readings.h"
#include "platform/MetadataIndex.h"

#include <QStringList>

#include <functional>
#include <memory>

class IndexerProcess;
class SearchState;
class UserDefaults;

// The index of this person's home folder, which the program twinleaf-index writes. Each query has a
// thread; none of them is waited for in the window.
class LocalMetadataIndex final : public MetadataIndex {
public:
    // The first search starts `indexer`; none: somebody else sees to the index.
    LocalMetadataIndex(const UserDefaults &defaults, IndexerProcess *indexer);
    ~LocalMetadataIndex() override;

    // To be called when the window stands: who has searched once has an index, which is kept up
    // from then on.
    void keepUp();

    std::unique_ptr<MetadataQuery> execute(const MetadataSearch &search) override;
    QList<MetadataAttribute> attributesOf(const QString &path) override;

    // Stops what runs, before the program ends. False when a thread does not come back from a disk
    // that is gone: only the end of the process ends it.
    bool end();

private:
    const UserDefaults &_defaults;
    IndexerProcess *const _indexer;
    std::vector<std::weak_ptr<SearchState>> _states; // of the queries that may still run
    Readings _threads;
};
