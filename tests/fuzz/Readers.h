#pragma once

#include <QByteArray>

#include <cstdio>
#include <cstdlib>

namespace Readers {

// Ends the program when what must always hold does not.
inline void require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

// Those of ForeignReaders.cpp.
void readDocumentParts(const QByteArray &bytes);
void readForeignText(const QByteArray &bytes);
void readReaderAnswer(const QByteArray &bytes);

} // namespace Readers
