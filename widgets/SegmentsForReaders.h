#pragma once

// Lets screen readers see the segments of each SegmentedControl as tabs of a list: their names,
// which is selected, and a way to choose one. Once is enough; main thread.
void exposeSegments();
