#pragma once

#include "search/Database.h"
#include "search/QueryText.h"

#include <functional>

// Which documents may be hits, by the full-text indexes alone: all that are, and some that are not.
namespace DocumentCandidates {

enum class In { Properties, Content };
enum class Certainty { May, Is }; // the value itself has to be looked at, or not

} // namespace DocumentCandidates

// Each once, until `take` answers false. Where no word of the text can be told, each document of
// the index. On the thread of the database.
void eachCandidate(
    Database &database, const QueryText &query, DocumentCandidates::In in,
    const std::function<bool(qint64 document, DocumentCandidates::Certainty certainty)> &take);
