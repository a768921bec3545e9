#include "reader/Documents.h"

#include "platform/ReaderWords.h"
#include "reader/DocumentXml.h"
#include "reader/Html.h"
#include "reader/PlainText.h"

#include <QIODevice>
#include <QRegularExpression>

#include <archive.h>
#include <archive_entry.h>
#include <array>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int MembersLimit = 20000;
constexpr qint64 UnpackedLimit = qint64(128) << 20; // of all members, whatever they say

// What a member of the archive holds, unpacked as it is read; it ends where the limit is.
class Member final : public QIODevice {
public:
    Member(archive *from, qint64 &room)
        : _from(from)
        , _room(room)
    {
        open(ReadOnly);
    }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *bytes, qint64 most) override
    {
        const auto come = archive_read_data(_from, bytes, size_t(std::min(most, _room)));
        if (come <= 0)
            return -1; // at the end or damaged: for the XML in it that is one
        _room -= come;
        return come;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    archive *_from;
    qint64 &_room; // left for this document
};

struct Part {
    QRegularExpression path;
    void (*read)(QIODevice &, Findings &);
};

void readPage(QIODevice &member, Findings &findings)
{
    Findings head = findings.another(); // titles of chapters are none of the book
    findings.addText(htmlText(decodedText(member.read(ReaderWords::TextLimit)), head));
    findings.addBreak();
}

// The parts that hold words, wherever they come in the archive.
const Part *partAt(const QString &path)
{
    static const std::array parts {
        Part { QRegularExpression(uR"(^content\.xml$)"_s), &readOpenDocumentText },
        Part { QRegularExpression(uR"(^meta\.xml$)"_s), &readDocumentProperties },
        Part { QRegularExpression(uR"(^docProps/(core|app)\.xml$)"_s), &readDocumentProperties },
        Part { QRegularExpression(
                   uR"(^word/(document|footnotes|endnotes|comments|header\d*|footer\d*)\.xml$)"_s),
               &readOfficeText },
        Part { QRegularExpression(uR"(^ppt/(slides/slide|notesSlides/notesSlide)\d+\.xml$)"_s),
               &readOfficeText },
        Part { QRegularExpression(uR"(^xl/(sharedStrings|worksheets/sheet\d+)\.xml$)"_s),
               &readSheet },
        Part { QRegularExpression(uR"(\.opf$)"_s), &readDocumentProperties },
    };
    static const Part page { QRegularExpression(uR"(\.x?html?$)"_s), &readPage };
    for (const Part &part : parts)
        if (part.path.match(path).hasMatch())
            return &part;
    return page.path.match(path).hasMatch() ? &page : nullptr;
}

bool isBook(archive *from, archive_entry *entry)
{
    const char *const path = archive_entry_pathname_utf8(entry);
    if (!path || QByteArrayView(path) != "mimetype")
        return false;
    std::array<char, 64> type {};
    const auto size = archive_read_data(from, type.data(), type.size());
    return size > 0 && QByteArrayView(type.data(), size).startsWith("application/epub+zip");
}

} // namespace

ForeignFiles::Outcome readZippedDocument(QByteArrayView bytes, Findings &findings)
{
    using Outcome = ForeignFiles::Outcome;
    const std::unique_ptr<archive, decltype(&archive_read_free)> zip(archive_read_new(),
                                                                     &archive_read_free);
    archive_read_support_format_zip_seekable(zip.get());
    if (bytes.isEmpty()
        || archive_read_open_memory(zip.get(), bytes.data(), size_t(bytes.size())) != ARCHIVE_OK)
        return Outcome::Failed;
    qint64 room = UnpackedLimit;
    bool isDocument = false;
    bool pagesCount = false;
    archive_entry *entry = nullptr;
    int result = ARCHIVE_OK;
    const auto isOver = [&] { return room <= 0 || findings.isOver(); };
    int members = 0;
    for (; members < MembersLimit && !isOver(); ++members) {
        result = archive_read_next_header(zip.get(), &entry);
        if (result == ARCHIVE_EOF || result == ARCHIVE_FATAL)
            break;
        if (members == 0)
            pagesCount = isBook(zip.get(), entry);
        const char *const path = archive_entry_pathname_utf8(entry);
        const Part *const part = path ? partAt(QString::fromUtf8(path)) : nullptr;
        if (!part || (part->read == &readPage && !pagesCount))
            continue;
        isDocument = true;
        Member member(zip.get(), room);
        part->read(member, findings);
    }
    if (room <= 0 || members == MembersLimit)
        findings.cut();
    return isDocument             ? Outcome::Read
        : result == ARCHIVE_FATAL ? Outcome::Failed
                                  : Outcome::Nothing;
}
