#include "files/HiddenRule.h"

#include "tests/fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    const QByteArray file = bytesOf(data, size);
    const auto names = HiddenRule::listedIn(file);
    for (const QByteArray &name : names)
        require(!name.isEmpty() && !name.contains('\n')
                    && ('\n' + file + '\n').contains('\n' + name + '\n'),
                "a name is one line of the file");
    return 0;
}
