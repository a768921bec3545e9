#include "reader/Sound.h"

#include <QStringList>

#include <fileref.h>
#include <tbytevector.h>
#include <tiostream.h>
#include <tpropertymap.h>

using namespace Qt::StringLiterals;

namespace {

// The file as taglib reads it: from where it says, and never written.
class Stream final : public TagLib::IOStream {
public:
    Stream(const FileBytes &file, QByteArray name)
        : _file(file)
        , _name(std::move(name))
    {
    }
    TagLib::FileName name() const override { return _name.constData(); }
    TagLib::ByteVector readBlock(unsigned long length) override
    {
        constexpr unsigned long Most = 64UL << 20; // of a tag that says how long it is
        const QByteArray bytes = _file.read(_at, qint64(std::min(length, Most)));
        _at += bytes.size();
        return { bytes.constData(), unsigned(bytes.size()) };
    }
    void writeBlock(const TagLib::ByteVector &) override { }
    void insert(const TagLib::ByteVector &, unsigned long, unsigned long) override { }
    void removeBlock(unsigned long, unsigned long) override { }
    bool readOnly() const override { return true; }
    bool isOpen() const override { return true; }
    void seek(long offset, Position from) override
    {
        const qint64 base = from == Beginning ? 0 : from == Current ? _at : _file.size();
        if (base + offset >= 0)
            _at = base + offset;
    }
    long tell() const override { return _at; }
    long length() override { return _file.size(); }
    void truncate(long) override { }

private:
    const FileBytes &_file;
    const QByteArray _name;
    qint64 _at = 0;
};

QString textOf(const TagLib::String &text)
{
    return QString::fromStdWString(text.toWString());
}

struct Named {
    const char *tag;
    QString name;
};

void readTags(const TagLib::PropertyMap &tags, Findings &findings)
{
    const auto each = [&](const Named &named, auto take) {
        if (!tags.contains(named.tag))
            return;
        for (const TagLib::String &value : tags[named.tag])
            take(named.name, textOf(value));
    };
    const auto text = [&](const QString &name, const QString &value) { findings.add(name, value); };
    const auto list = [&](const QString &name, const QString &value) {
        findings.addToList(name, value);
    };
    // "3/12" is the third of twelve, "2004-05-01" of the year 2004.
    const auto number = [&](const QString &name, const QString &value) {
        bool isNumber = false;
        const qint64 whole = value.section(u'/', 0, 0).section(u'-', 0, 0).toLongLong(&isNumber);
        if (isNumber && whole > 0)
            findings.add(name, whole);
    };
    for (const Named &named :
         { Named { "TITLE", u"kMDItemTitle"_s }, Named { "ALBUM", u"kMDItemAlbum"_s },
           Named { "COMPOSER", u"kMDItemComposer"_s }, Named { "LYRICIST", u"kMDItemLyricist"_s },
           Named { "GENRE", u"kMDItemMusicalGenre"_s }, Named { "COMMENT", u"kMDItemComment"_s },
           Named { "COPYRIGHT", u"kMDItemCopyright"_s } })
        each(named, text);
    for (const Named &named :
         { Named { "ARTIST", u"kMDItemAuthors"_s }, Named { "ALBUMARTIST", u"kMDItemAuthors"_s },
           Named { "PERFORMER", u"kMDItemPerformers"_s },
           Named { "LABEL", u"kMDItemPublishers"_s } })
        each(named, list);
    for (const Named &named :
         { Named { "TRACKNUMBER", u"kMDItemAudioTrackNumber"_s },
           Named { "DATE", u"kMDItemRecordingYear"_s }, Named { "BPM", u"kMDItemTempo"_s } })
        each(named, number);
    each({ "LYRICS", {} }, [&](const QString &, const QString &words) {
        findings.addText(words);
        findings.addBreak();
    });
}

} // namespace

bool readSound(const FileBytes &file, const QByteArray &name, Findings &findings)
{
    Stream stream(file, name);
    const TagLib::FileRef sound(&stream);
    if (sound.isNull())
        return false;
    readTags(sound.file()->properties(), findings);
    if (const TagLib::AudioProperties *properties = sound.audioProperties()) {
        constexpr double MillisecondsInSecond = 1000;
        if (properties->lengthInMilliseconds() > 0)
            findings.add(u"kMDItemDurationSeconds"_s,
                         properties->lengthInMilliseconds() / MillisecondsInSecond);
        if (properties->bitrate() > 0) // told in thousands
            findings.add(u"kMDItemAudioBitRate"_s, qint64(properties->bitrate()) * 1000);
        if (properties->sampleRate() > 0)
            findings.add(u"kMDItemAudioSampleRate"_s, qint64(properties->sampleRate()));
        if (properties->channels() > 0)
            findings.add(u"kMDItemAudioChannelCount"_s, qint64(properties->channels()));
    }
    return true;
}
