#pragma once

#include "files/Descriptor.h"

// Of the programs that would write one index, one writes at a time: the one that holds this. As
// long as nobody does, nobody follows what happens on the disk. The file lies beside the index.
class IndexLock final {
public:
    // Waits, without a cost, until no other has it; it is given back with the object.
    IndexLock();
    bool isHeld() const { return _error == 0; }
    int error() const { return _error; } // why it is not
    // Whoever wants it now would find this one.
    bool isInPlace() const;

    // Whether any program has it. Any thread.
    static bool isHeldByAny();

private:
    Descriptor _file;
    int _error = 0;
};
