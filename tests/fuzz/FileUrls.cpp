#include "files/FileUrls.h"

#include "files/PathText.h"
#include "tests/fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    const auto paths = FileUrls::pathsOf(bytesOf(data, size));
    if (!paths)
        return 0;
    for (const QString &path : *paths)
        require(path.startsWith(u'/') && !path.contains(QChar(0))
                    && PathText::normalized(path) == path,
                "an address is a plain path");
    require(FileUrls::pathsOf(FileUrls::uriList(*paths)) == paths, "and the way back is the same");
    return 0;
}
