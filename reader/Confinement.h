#pragma once

#include <QtGlobal>

// Closes, for good, what reading a file does not need. Before the first foreign byte, in a process
// that has but one thread yet.
namespace Confinement {

constexpr int Descriptors = 64; // that may be open

// Nothing of it can be refused by the system: no core file, nothing written, few descriptors, an
// end to memory (not under the address sanitizer, whose shadow is larger than any limit).
void setLimits();

// No path, socket, program or other process any more; reading fonts and the tables of PDF only.
// Answers what of ReaderWords::Closed the system let it close; where it lets nothing, no further
// process can be started at least.
quint32 closeDoors();

// Ends the process when it uses more of the processor than a file is worth, counted from now.
void startProcessorLimit();

} // namespace Confinement
