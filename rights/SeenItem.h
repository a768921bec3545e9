#pragma once

#include "files/Descriptor.h"
#include "rights/Request.h"

#include <sys/stat.h>

// The item a request is about, held by a descriptor (O_PATH): what is done is done to that one,
// whatever comes to its path.
struct SeenItem {
    Descriptor item;
    struct stat status { }; // when it was taken hold of
};

// Walks the path name by name through no link, and takes only the very item that the person saw,
// and only of a kind and in a place where changing it is a matter of files.
std::variant<SeenItem, Outcome> takeItem(const ItemName &name);

// A path that leads to it from this process.
std::string pathOf(const SeenItem &seen);

// What the last call failed with, as an outcome.
Outcome failure(const char *what);
