#include "unpack/ZipDirectory.h"

#include "tests/fuzz/Fuzz.h"

#include <algorithm>

int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    const QByteArray file = bytesOf(data, size);
    const auto bytesAt = [&](qint64 offset, qint64 count) {
        require(offset >= 0 && count >= 0, "only what can be in a file is asked for");
        return offset <= file.size() && count <= file.size() - offset ? file.mid(offset, count)
                                                                      : QByteArray();
    };
    const ZipDirectory found = ZipDirectory::of(bytesAt, file.size());
    require(std::ranges::is_sorted(found.changes, {}, &ZipDirectory::Change::position),
            "changes are in order");
    require(found.changes.empty() || found.changes.front().position >= 0, "and in the file");
    for (auto name = found.maskedNames.cbegin(); name != found.maskedNames.cend(); ++name)
        require(!name.key().contains('\\') && name->contains('\\')
                    && name.key().size() == name->size(),
                "a mask replaces backslashes alone");
    return 0;
}
