#include "widgets/SegmentWidths.h"

#include <algorithm>
#include <numeric>
#include <utility>

SegmentWidths::SegmentWidths(int wholeRoom, const QList<int> &wanted, int selected, int narrow)
    : room(wholeRoom)
    , ofSegments(wanted)
{
    const int count = int(ofSegments.size());
    int excess = std::accumulate(wanted.begin(), wanted.end(), -room);
    const auto shrink = [&](int segment, int least) {
        int &width = ofSegments[segment];
        const int taken = std::clamp(width - least, 0, std::max(excess, 0));
        width -= taken;
        excess -= taken;
    };
    const int parent = selected - 1;
    if (excess > 0 && parent > 1) {
        fold = narrow;
        excess += narrow;
    }
    while (excess > 0 && folded + 1 < parent)
        excess -= std::exchange(ofSegments[++folded], 0);
    for (const int least : { narrow, 0 }) {
        for (int segment = count - 1; segment > selected; --segment)
            shrink(segment, least);
        for (int segment = parent; segment >= 0; --segment)
            if (!folds(segment))
                shrink(segment, least);
    }
    if (selected >= 0) {
        const int taken = std::clamp(excess, 0, fold);
        fold -= taken;
        excess -= taken;
        shrink(selected, 0);
    }
    int start = 0;
    for (const int width : std::as_const(ofSegments)) {
        starts.append(start);
        start += width + (starts.size() == 1 ? fold : 0);
    }
}
