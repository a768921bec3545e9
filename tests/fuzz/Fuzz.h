#pragma once

#include <QByteArray>

#include <cstdio>
#include <cstdlib>

// One reader of bytes from outside: libFuzzer calls it, and the runner of the seeds.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size);

inline QByteArray bytesOf(const unsigned char *data, size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), qsizetype(size));
}

// Ends the program when what must always hold does not.
inline void require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}
