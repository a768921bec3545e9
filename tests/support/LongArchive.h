#pragma once

#include "TestFolder.h"

// "a.cpgz" in the folder: small, and seconds of work to unpack, so that an unpacking can be ended
// long before it is over. Beside it stands "big", which its one member stands for.
inline void writeLongArchive(const TestFolder &world, const QString &folder)
{
    world.shell(u"cd '%1'; truncate -s 100M part; gzip -1 part; truncate -s 3G big; "
                "(head -c 116 <(echo big | cpio -o --quiet -H newc) | gzip; "
                "for i in {1..30}; do cat part.gz; done) > a.cpgz; rm part.gz"_s.arg(folder));
}
