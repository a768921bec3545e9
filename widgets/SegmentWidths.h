#pragma once

#include <QList>

// How the segments of a row share its room, in pixels. Where it is short the first `folded` behind
// segment 0 have none and share a fold, so that the selected one and its nearest stay readable.
struct SegmentWidths {
    // `wanted`: the widths with all of their texts; `selected`: -1 for none; `narrow`: the fold's,
    // and what a text needs at least.
    SegmentWidths(int room, const QList<int> &wanted, int selected, int narrow);

    bool folds(int segment) const { return segment > 0 && segment <= folded; }

    int room;
    QList<int> ofSegments;
    QList<int> starts; // where each begins, with the fold behind segment 0
    int folded = 0;
    int fold = 0;
};
