#include "settings/VersionText.h"

#include "files/FileName.h"
#include "tests/fuzz/Fuzz.h"

#include <QString>

int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    const QByteArray answer = bytesOf(data, size);
    require(VersionText::hexValue(answer) == VersionText::hexValue(answer.right(8)),
            "the last eight characters count");
    const QString shown = FileName::shown(QString::fromUtf8(answer)); // as the log has it
    for (const QChar c : shown)
        require(c.category() != QChar::Other_Control, "what is shown is one line");
    return 0;
}
