#pragma once

#include "files/FileStatus.h"
#include "model/Listing.h"
#include "model/RowChanges.h"

#include <QSet>

struct ChangedListing {
    Listing listing;
    RowChanges rows; // empty: nothing is to be seen of it
};

// The listing with some items as they are now: looked at as a reading does, in the listing's own
// order, behind those of equal keys. It shares what did not change. Nothing when the folder has to
// be read anew: another stands at its path, or none that can be read, or the names that were told
// need not be those that it lists. Worker thread.
std::optional<ChangedListing> withChanges(const Listing &listing, const FileIdentity &folder,
                                          const QSet<QByteArray> &names);
