#include "files/LinkFile.h"

#include "files/PathText.h"
#include "tests/fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    const QByteArray file = bytesOf(data, size);
    if (const auto target = LinkFile::targetIn(file)) {
        require(target->startsWith(u'/') && !target->contains(QChar(0))
                    && PathText::normalized(*target) == *target,
                "a target is a plain path");
        require(file.contains("[Desktop Entry]"), "only an entry leads anywhere");
    }
    return 0;
}
