#include "settings/CalendarFormat.h"

#include "settings/SettingsKeys.h"
#include "tests/fuzz/Fuzz.h"

#include <QStringList>
#include <QtEndian>

// Eight bytes of nanoseconds, as a file has them, then the format and those of the locale, a line
// each.
int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    constexpr size_t TimeSize = 8; // bytes
    if (size < TimeSize)
        return 0;
    const auto date = QDateTime::fromMSecsSinceEpoch(qFromLittleEndian<qint64>(data) / 1'000'000);
    const QString formats = QString::fromUtf8(bytesOf(data + TimeSize, size - TimeSize));
    const QStringList lines = formats.split(u'\n');
    const QString text =
        CalendarFormat::text(date, lines[0],
                             { { Settings::TimeDateFormat, lines.value(1) },
                               { Settings::DateFormat, lines.value(2) },
                               { Settings::TimeFormat, lines.value(3) },
                               { Settings::ShortMonthNames, lines.value(4).split(u' ') } });
    // At most 200 conversions, each of at most 99 digits, a name or another format.
    require(text.size() <= 200 * (100 + formats.size()) + formats.size(), "a text has an end");
    require(!CalendarFormat::description(date).isEmpty(), "every date can be described");
    return 0;
}
