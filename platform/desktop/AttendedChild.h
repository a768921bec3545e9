#pragma once

#include <sys/types.h>

// Starts a program in a folder ("" for the present one) with its output on the two descriptors,
// beneath a small process of our own, whose id is answered, or -1 with errno. That one lives as
// long as the program and all that it starts, and ends as the program does. It ends them by SIGTERM
// when it gets that itself, and when the thread that called this has ended, be the program killed.
// `arguments` begins with an absolute path. Any thread.
pid_t startAttended(const char *folder, char *const *arguments, int output, int errors);

// Starts a program that starts no other in an open folder, with its errors on the descriptor, by
// itself. It gets SIGTERM when the thread that called this has ended, be the program killed; what
// cannot be started ends as the shell has it, and says why. The rest as above.
pid_t startBound(int folder, char *const *arguments, int errors);
