#pragma once

#include <QtGlobal>

class Listing;

// What a folder holds, without "..".
struct ListingTotals {
    qsizetype folders = 0; // shown as such
    qsizetype files = 0; // and whatever else there is, packages among it
    qint64 bytes = 0; // of the files whose size is known

    static ListingTotals of(const Listing &listing); // one pass over its records
};
