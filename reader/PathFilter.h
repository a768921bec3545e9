#pragma once

// Leaves this process, of all paths, those that hold fonts and the tables of PDF, and these for
// reading; no network and no signal to others where the kernel has that, too. False where it has
// not even the first. The process must have given up new privileges.
bool closePaths();
