#pragma once

#include "search/FoundItems.h"
#include "search/QueryText.h"
#include "search/SearchState.h"
#include "search/WalkRules.h"

#include <memory>

// What the thread of a query does, from its first hit to its end.
struct LiveSearch {
    QString index; // the path of its file
    QueryText query;
    WalkRules rules;
};

// Answers from the index; by walking too, as long as that is not whole, or there is none. Then
// follows what is written to the index and what vanishes from the disk, until it is stopped. A
// thread of its own: it waits for the disk.
void runSearch(const LiveSearch &search, const std::shared_ptr<SearchState> &state);
