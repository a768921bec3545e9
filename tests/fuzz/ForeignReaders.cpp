#include "platform/ReaderWords.h"
#include "reader/DocumentXml.h"
#include "reader/Html.h"
#include "reader/Kinds.h"
#include "reader/Mail.h"
#include "reader/PlainText.h"
#include "reader/RichText.h"
#include "tests/fuzz/Readers.h"

#include <QBuffer>
#include <QGuiApplication>

#include <cstring>

// Our own readers of foreign files, and the reader of what the confined program answers.
namespace Readers {

// The first byte says which part of a document it is.
void readDocumentParts(const QByteArray &bytes)
{
    if (bytes.isEmpty())
        return;
    constexpr decltype(&readSheet) Parts[] { &readOpenDocumentText, &readOfficeText, &readSheet,
                                             &readDocumentProperties };
    QByteArray xml = bytes.sliced(1);
    QBuffer part(&xml);
    part.open(QIODevice::ReadOnly);
    Findings findings;
    Parts[quint8(bytes[0]) % std::size(Parts)](part, findings);
    // An entity may stand for more than its name, but not for much.
    require(findings.contents().text.size() <= 4096 * (xml.size() + 1), "a part has an end");
}

void readForeignText(const QByteArray &bytes)
{
    static int count = 1;
    static char name[] = "fuzz";
    static char *names[] { name, nullptr };
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QGuiApplication application(count, names); // names of characters need it
    const QString text = decodedText(bytes);
    require(text.size() <= bytes.size() * 2, "no byte is more than one character");
    Findings findings;
    const QString words = htmlText(text, findings);
    require(words.size() <= text.size() * 2 + 2, "a page has no more words than are in it");
    readRichText(bytes, findings);
    require(findings.contents().text.size() <= bytes.size(), "and so has rich text");
    Findings mail;
    readMail(bytes, mail);
    require(mail.contents().text.size() <= text.size() * 2 + 2, "and a message");
    kindOf(bytes, "name.htm");
}

// A question and its answer as they stand in the packets, then what lies in the shared memory.
void readReaderAnswer(const QByteArray &bytes)
{
    using namespace ReaderWords;
    Question question;
    Answer answer;
    if (size_t(bytes.size()) < sizeof question + sizeof answer)
        return;
    std::memcpy(&question, bytes.constData(), sizeof question);
    std::memcpy(&answer, bytes.constData() + sizeof question, sizeof answer);
    if (isAnswer(answer, question)) {
        const qint64 contents =
            qint64(answer.attributesSize) + qint64(answer.textSize) * qint64(sizeof(QChar));
        const qint64 pixels = qint64(answer.shownWidth) * answer.shownHeight * 4;
        require(contents >= 0 && contents <= MemorySize && pixels >= 0 && pixels <= MemorySize,
                "an answer lies in the memory");
    }
    const auto read = attributesIn(bytes.sliced(sizeof question + sizeof answer));
    if (!read)
        return;
    const auto again = attributesIn(bytesOf(*read));
    require(again && again->size() <= read->size(), "what was read can be told again");
}

} // namespace Readers
