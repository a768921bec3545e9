#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <array>
#include <optional>

// How the bytes of a text stand for characters. Small, compared and copied as a value. Any thread.
class TextEncoding final {
public:
    enum class Form : quint8 { Utf8, Utf16LE, Utf16BE, Utf32LE, Utf32BE, SingleByte };

    TextEncoding() = default; // UTF-8

    // Those that a person can choose from, the usual ones first.
    static const QList<TextEncoding> &all();
    // What the first bytes of a text speak for: its mark, else its look; nothing where they are no
    // text. `isWhole`: nothing comes after them.
    static std::optional<TextEncoding> of(QByteArrayView start, bool isWhole);

    QString name() const { return QString::fromLatin1(_name); } // "UTF-8"
    Form form() const { return _form; }
    int unit() const; // bytes that a character has at least, and a multiple of which it has

    struct Character {
        char32_t code; // U+FFFD for what stands for none
        int length; // bytes
    };
    // The one at the start of some bytes, of which there is at least one.
    Character first(QByteArrayView bytes) const;
    // The bytes that go before the first place, within these few, where a character begins.
    int bytesToBoundary(QByteArrayView before, QByteArrayView after) const;
    // Nothing where it cannot say one of the characters.
    std::optional<QByteArray> encoded(const QString &text) const;
    QString decoded(QByteArrayView bytes) const;

    friend bool operator==(const TextEncoding &a, const TextEncoding &b)
    {
        return a._form == b._form && a._table == b._table;
    }

private:
    using Table = std::array<char16_t, 256>;
    constexpr TextEncoding(Form form, const char *name, const Table *table = nullptr)
        : _form(form)
        , _name(name)
        , _table(table)
    {
    }
    static const Table *tableOf(const char *name);
    static bool looksLikeText(QByteArrayView start);

    Form _form = Form::Utf8;
    const char *_name = "UTF-8";
    const Table *_table = nullptr; // of a single byte
};
