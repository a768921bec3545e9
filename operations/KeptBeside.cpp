#include "operations/KeptBeside.h"

#include "files/Rename.h"

#include <climits>

std::optional<QByteArray> keepBeside(int fromFolder, const QByteArray &entry, int folder,
                                     const QByteArray &name)
{
    for (int number = 1; number < 1000; ++number) {
        const QByteArray suffix = " (" + QByteArray::number(number) + ')';
        qsizetype length = qMin<qsizetype>(name.size(), NAME_MAX - suffix.size());
        while (length > 0 && length < name.size() && (uchar(name[length]) & 0xC0) == 0x80)
            --length; // not in the middle of a character
        const QByteArray beside = name.left(length) + suffix;
        const auto failed = Rename::noReplace(fromFolder, entry, folder, beside);
        if (!failed)
            return beside;
        if (failed != std::errc::file_exists)
            return std::nullopt;
    }
    return std::nullopt;
}
