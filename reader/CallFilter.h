#pragma once

enum class Paths {
    Refused,
    ReadOnly, // what of them may be read is settled elsewhere
};

// Leaves this process the system calls that reading an open file needs; every other one fails as
// one that is not permitted. False where the system does not let it.
bool closeSystemCalls(Paths paths);
