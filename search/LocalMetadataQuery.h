#pragma once

#include "platform/MetadataIndex.h"
#include "search/SearchState.h"

#include <memory>

// A query whose thread lives as long as it. Main thread.
class LocalMetadataQuery final : public MetadataQuery {
    Q_OBJECT

public:
    // The state of a search that is about to run.
    explicit LocalMetadataQuery(std::shared_ptr<SearchState> state);
    ~LocalMetadataQuery() override; // does not wait

    qsizetype resultCount() const override { return qsizetype(_found.order.size()); }
    const Result &resultAt(qsizetype index) const override
    {
        return _found.order[size_t(index)]->result;
    }
    qsizetype indexOf(const Result &result) const override { return _found.indexOf(result); }
    bool isComplete() const override { return _found.complete; }
    bool isCut() const override { return _found.cut; }
    void setShown(bool shown) override { _state->setShown(shown); }

private:
    void takeNews();

    const std::shared_ptr<SearchState> _state;
    FoundItems::Snapshot _found;
};
