#pragma once

#include "model/ListingOptions.h"

#include <QString>

#include <memory>

class FileKinds;
struct ListingData;

// Reads a folder into rows: "..", then folders, then files, each in the folder's own order. A
// folder that cannot be read, or whose server does not answer, gives only "..". Main thread.
std::shared_ptr<const ListingData> readListing(const QString &folder, const ListingOptions &options,
                                               const FileKinds &kinds);
