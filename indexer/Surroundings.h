#pragma once

#include <functional>

// What this program is among the others.
namespace Surroundings {

// The processor and the disk are its own only when nobody else needs them; children inherit it.
void takeLowestPriority();
// The limit of open files as high as may be: there is one for each level of a tree.
void raiseFileLimit();
// Large blocks go back to the system, so that one large document does not stay in the memory.
void returnMemory();

// Calls the function, on a thread of its own, when the standard input ends: whoever started this
// program is gone. A little later the process ends by itself, whatever it is waiting for.
void endWithInput(std::function<void()> stop);

} // namespace Surroundings
