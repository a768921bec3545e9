#include "reader/RichText.h"

#include <QSet>
#include <QStringDecoder>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

enum class Place : quint8 { Skipped, Body, Title, Author, Subject, Keywords };

struct Group {
    Place place = Place::Body;
    int skipped = 1; // characters that stand for the same as \u, for older readers
};

class Document {
public:
    Document(const QByteArray &bytes, Findings &findings)
        : _bytes(bytes)
        , _findings(findings)
    {
    }
    void read()
    {
        while (_at < _bytes.size()) {
            const char c = _bytes[_at++];
            if (c == '{')
                open();
            else if (c == '}')
                close();
            else if (c == '\\')
                readControl();
            else if (c != '\r' && c != '\n')
                addByte(c);
        }
        flush();
        _findings.setText(_text);
    }

private:
    void open()
    {
        constexpr size_t Deepest = 1000;
        flush();
        if (_outer.size() < Deepest)
            _outer.push_back(_group);
        else
            ++_tooDeep;
    }
    void close()
    {
        flush();
        const Place left = _group.place;
        if (_tooDeep > 0) {
            --_tooDeep;
        } else if (!_outer.empty()) {
            _group = _outer.back();
            _outer.pop_back();
        }
        if (left != _group.place)
            tell(left);
    }
    void tell(Place place)
    {
        if (place == Place::Title)
            _findings.add(u"kMDItemTitle"_s, _property);
        else if (place == Place::Author)
            _findings.addToList(u"kMDItemAuthors"_s, _property);
        else if (place == Place::Subject)
            _findings.add(u"kMDItemSubject"_s, _property);
        else if (place == Place::Keywords)
            _findings.addToList(u"kMDItemKeywords"_s, _property);
        _property.clear();
    }
    // A byte of the text, in the file's charset.
    void addByte(char c)
    {
        if (_toSkip > 0)
            --_toSkip;
        else
            _pending += c;
    }
    void add(const QString &text)
    {
        flush();
        if (_group.place == Place::Body)
            _text += text;
        else if (_group.place != Place::Skipped)
            _property += text;
    }
    void flush()
    {
        if (_pending.isEmpty())
            return;
        const QByteArray bytes = std::exchange(_pending, {});
        if (_group.place != Place::Skipped)
            add(_decoder.decode(bytes));
    }
    void readControl()
    {
        if (_at >= _bytes.size())
            return;
        const char c = _bytes[_at];
        if (QChar::isLetter(quint8(c)) && quint8(c) < 128)
            return readWord();
        ++_at;
        if (c == '\'') {
            addByte(char(_bytes.mid(_at, 2).toUInt(nullptr, 16)));
            _at += 2;
        } else if (c == '*') {
            _group.place = Place::Skipped; // what only newer readers know
        } else if (c == '~') {
            add(QString(QChar::Nbsp));
        } else if (c == '_') {
            add(u"-"_s);
        } else if (c == '\\' || c == '{' || c == '}') {
            addByte(c);
        } else if (c == '\n' || c == '\r') {
            add(u"\n"_s);
        }
    }
    void readWord()
    {
        const qsizetype start = _at;
        while (_at < _bytes.size() && _bytes[_at] >= 'a' && _bytes[_at] <= 'z')
            ++_at;
        if (_at == start) // a capital: none of ours
            ++_at;
        const QByteArray word = _bytes.mid(start, _at - start);
        const qsizetype number = _at;
        while (_at < _bytes.size()
               && ((_bytes[_at] >= '0' && _bytes[_at] <= '9')
                   || (_at == number && _bytes[_at] == '-')))
            ++_at;
        const int value = _bytes.mid(number, std::min<qsizetype>(_at - number, 11)).toInt();
        if (_at < _bytes.size() && _bytes[_at] == ' ')
            ++_at;
        obey(word, value);
    }
    void obey(const QByteArray &word, int value)
    {
        static const QSet<QByteArray> breaks { "par", "line", "row", "page", "sect" };
        static const QSet<QByteArray> skipped {
            "fonttbl",   "colortbl",  "stylesheet",         "pict",
            "object",    "datafield", "themedata",          "fldinst",
            "listtable", "generator", "colorschememapping", "latentstyles",
            "xmlnstbl",  "info"
        };
        if (breaks.contains(word)) {
            add(u"\n"_s);
        } else if (word == "tab" || word == "cell") {
            add(u"\t"_s);
        } else if (word == "u") {
            add(QString(QChar(char16_t(value))));
            _toSkip = _group.skipped;
        } else if (word == "uc") {
            _group.skipped = std::clamp(value, 0, 16);
        } else if (word == "ansicpg") {
            if (QStringDecoder decoder("windows-" + QByteArray::number(value)); decoder.isValid())
                _decoder = std::move(decoder);
        } else if (word == "bin") {
            _at += std::max(0, value);
        } else if (skipped.contains(word)) {
            _group.place = Place::Skipped;
        } else if (word == "title") {
            _group.place = Place::Title;
        } else if (word == "author") {
            _group.place = Place::Author;
        } else if (word == "subject") {
            _group.place = Place::Subject;
        } else if (word == "keywords") {
            _group.place = Place::Keywords;
        }
    }

    const QByteArray &_bytes;
    Findings &_findings;
    QStringDecoder _decoder { "windows-1252" };
    std::vector<Group> _outer;
    Group _group;
    int _tooDeep = 0; // groups inside the deepest that counts
    int _toSkip = 0;
    QByteArray _pending;
    QString _property;
    QString _text;
    qsizetype _at = 0;
};

} // namespace

void readRichText(const QByteArray &bytes, Findings &findings)
{
    Document(bytes, findings).read();
}
