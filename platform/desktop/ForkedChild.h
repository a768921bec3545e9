#pragma once

#include <sys/types.h>

// Steps of a child of ours between fork and exec. Such a child of a program with threads may do
// little: these make only calls that are safe there.
namespace ForkedChild {

// Like fork(2). The child may be asked to end before it has run at all, and a handler of ours is
// not for it: until setSignals() all signals are held back there.
pid_t make();

// Every signal as the system has it, and none held back.
void setSignals();

// Its standard output and errors; the standard input is at its end. Nothing else stays open, but
// for `kept`, which then is number 3 and closes when it becomes another program.
void setDescriptors(int output, int errors, int kept = -1);

} // namespace ForkedChild
