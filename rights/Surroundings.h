#pragma once

// Makes this process independent of whoever has started it: environment, descriptors, signals,
// limits; and leaves it of root's rights only those that the three commands take. Before anything
// else is done.
void leaveSurroundings();

// From here on it goes on to its end, however long that takes: before the first write.
void leaveNothingHalfDone();
