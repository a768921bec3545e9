#include "settings/PropertyList.h"

#include "tests/fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    const auto read = PropertyList::read(bytesOf(data, size));
    if (!read)
        return 0;
    const QByteArray written = PropertyList::toXml(*read);
    const auto again = PropertyList::read(written);
    require(again.has_value(), "what is written can be read");
    require(PropertyList::toXml(*again) == written, "and holds the same");
    return 0;
}
