#include "tests/fuzz/Readers.h"

#include "files/FileName.h"
#include "files/FileUrls.h"
#include "files/HiddenRule.h"
#include "files/LinkFile.h"
#include "files/MountTable.h"
#include "files/PathText.h"
#include "settings/CalendarFormat.h"
#include "settings/PropertyList.h"
#include "settings/SettingsKeys.h"
#include "settings/VersionText.h"
#include "unpack/ZipDirectory.h"

#include <QStringList>
#include <QtEndian>

#include <algorithm>

using namespace Qt::StringLiterals;

// The readers of bytes from outside, and what must hold whatever the bytes are. A program for each.
namespace Readers {

bool isPlainPath(const QString &path)
{
    return path.startsWith(u'/') && !path.contains(QChar(0)) && PathText::normalized(path) == path;
}

// Eight bytes of nanoseconds, as a file has them, then the format and those of the locale, a line
// each.
void readCalendarFormat(const QByteArray &bytes)
{
    constexpr int TimeSize = 8; // bytes
    if (bytes.size() < TimeSize)
        return;
    const auto date =
        QDateTime::fromMSecsSinceEpoch(qFromLittleEndian<qint64>(bytes.constData()) / 1'000'000);
    const QString formats = QString::fromUtf8(bytes.mid(TimeSize));
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
}

void readFileUrls(const QByteArray &bytes)
{
    const auto paths = FileUrls::pathsOf(bytes);
    if (!paths)
        return;
    require(std::ranges::all_of(*paths, isPlainPath), "an address is a plain path");
    require(FileUrls::pathsOf(FileUrls::uriList(*paths)) == paths, "and the way back is the same");
}

void readHiddenRule(const QByteArray &bytes)
{
    for (const QByteArray &name : HiddenRule::listedIn(bytes))
        require(!name.isEmpty() && !name.contains('\n')
                    && ('\n' + bytes + '\n').contains('\n' + name + '\n'),
                "a name is one line of the file");
}

void readLinkFile(const QByteArray &bytes)
{
    const auto target = LinkFile::targetIn(bytes);
    require(!target || isPlainPath(*target), "a target is a plain path");
    require(!target || bytes.contains("[Desktop Entry]"), "only an entry leads anywhere");
}

void readMountTable(const QByteArray &bytes)
{
    const auto table = MountTable::fromText(bytes);
    for (const Mount &mount : table.mounts()) {
        const Mount *top = table.mountOf(mount.point);
        require(top && top->point == mount.point, "a point lies on what is mounted there");
        const Mount *below = table.mountOf(mount.point + u"/x"_s);
        require(below && below->point.size() >= mount.point.size(), "and so does what is below");
    }
}

void readPropertyList(const QByteArray &bytes)
{
    const auto read = PropertyList::read(bytes);
    if (!read)
        return;
    const QByteArray written = PropertyList::toXml(*read);
    const auto again = PropertyList::read(written);
    require(again.has_value(), "what is written can be read");
    require(PropertyList::toXml(*again) == written, "and holds the same");
}

void readVersionText(const QByteArray &bytes)
{
    require(VersionText::hexValue(bytes) == VersionText::hexValue(bytes.right(8)),
            "the last eight characters count");
    const QString shown = FileName::shown(QString::fromUtf8(bytes)); // as the log has it
    require(
        std::ranges::none_of(shown, [](QChar c) { return c.category() == QChar::Other_Control; }),
        "what is shown is one line");
}

void readZipDirectory(const QByteArray &bytes)
{
    const auto bytesAt = [&](qint64 offset, qint64 count) {
        require(offset >= 0 && count >= 0, "only what can be in a file is asked for");
        return offset <= bytes.size() && count <= bytes.size() - offset ? bytes.mid(offset, count)
                                                                        : QByteArray();
    };
    const ZipDirectory found = ZipDirectory::of(bytesAt, bytes.size());
    require(std::ranges::is_sorted(found.changes, {}, &ZipDirectory::Change::position),
            "changes are in order");
    require(found.changes.empty() || found.changes.front().position >= 0, "and in the file");
    for (auto name = found.maskedNames.cbegin(); name != found.maskedNames.cend(); ++name)
        require(!name.key().contains('\\') && name->contains('\\')
                    && name.key().size() == name->size(),
                "a mask replaces backslashes alone");
}

} // namespace Readers

// The fuzzer calls it, and the runner of the seeds.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    Readers::READER(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    return 0;
}
