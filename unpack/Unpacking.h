#pragma once

#include "unpack/Extraction.h"
#include "unpack/Merge.h"

class Journal;

struct UnpackingJob {
    ArchiveKind kind = ArchiveKind::Cpio;
    QByteArray archive; // absolute, as the next
    QByteArray destination;
};

// Unpacks into a private folder in the destination, held by descriptor and noted in the journal,
// and merges what came out. Whether all of it arrived; what did not, and why, is told on standard
// error. Changes the working directory.
bool unpack(const UnpackingJob &job, const Journal &journal, const Merge::ToTrash &toTrash);
