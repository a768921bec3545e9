#include "indexer/OfferedKinds.h"

#include "files/FileName.h"

#include <QMimeType>

#include <algorithm>
#include <dirent.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 LargestUnknown = 1024 * 1024; // bytes
constexpr qsizetype LongestSuffix = 16; // longer ones are no suffixes, and would fill the memory
constexpr qsizetype MostSuffixes = 4096;

// All else that may have properties or text begins with one of these, or inherits from plain text.
constexpr const char *Groups[] = { "image/", "audio/", "video/", "text/" };
constexpr const char *Kinds[] = {
    "application/pdf", "application/rtf",      "application/xhtml+xml",
    "application/xml", "application/epub+zip",
};
constexpr const char *Families[] = {
    "application/vnd.oasis.opendocument.",
    "application/vnd.openxmlformats-officedocument.",
    "application/vnd.ms-word.",
    "application/vnd.ms-excel.",
    "application/vnd.ms-powerpoint.",
};

} // namespace

bool OfferedKinds::isOffered(const PackedItem &item)
{
    if (item.type != DT_REG || item.stamp.size == 0)
        return false;
    const qsizetype dot = item.name.lastIndexOf('.');
    Answer answer = Answer::Unknown;
    if (dot > 0 && item.name.size() - dot - 1 <= LongestSuffix) {
        const QByteArray suffix = item.name.sliced(dot + 1).toByteArray().toLower();
        const auto known = _bySuffix.constFind(suffix);
        if (known != _bySuffix.constEnd())
            answer = *known;
        else {
            answer = answerFor(suffix);
            if (_bySuffix.size() < MostSuffixes)
                _bySuffix.insert(suffix, answer);
        }
    }
    return answer == Answer::Yes
        || (answer == Answer::Unknown && item.stamp.size <= LargestUnknown);
}

OfferedKinds::Answer OfferedKinds::answerFor(const QByteArray &suffix) const
{
    const QMimeType kind = _kinds.mimeTypeForFile(u"x."_s + FileName::fromBytes(suffix),
                                                  QMimeDatabase::MatchExtension);
    if (!kind.isValid() || kind.isDefault())
        return Answer::Unknown;
    const auto begins = [name = kind.name()](const char *group) {
        return name.startsWith(QLatin1StringView(group));
    };
    const bool offered =
        std::ranges::any_of(Groups, begins) || std::ranges::any_of(Families, begins)
        || std::ranges::any_of(
            Kinds, [&kind](const char *one) { return kind.inherits(QString::fromLatin1(one)); })
        || kind.inherits(u"text/plain"_s);
    return offered ? Answer::Yes : Answer::No;
}
