#include "reader/Pdf.h"

#include <QDateTime>

#include <climits>
#include <memory>
#include <poppler-document.h>
#include <poppler-page.h>

using namespace Qt::StringLiterals;

namespace {

QString textOf(const poppler::ustring &text)
{
    static_assert(sizeof(poppler::ustring::value_type) == sizeof(char16_t));
    QStringView view(reinterpret_cast<const char16_t *>(text.data()), qsizetype(text.size()));
    if (view.startsWith(QChar(QChar::ByteOrderMark)))
        view = view.sliced(1);
    return view.toString();
}

void readProperties(const poppler::document &document, Findings &findings)
{
    findings.add(u"kMDItemTitle"_s, textOf(document.get_title()));
    findings.addToList(u"kMDItemAuthors"_s, textOf(document.get_author()));
    findings.add(u"kMDItemSubject"_s, textOf(document.get_subject()));
    for (const QString &word : textOf(document.get_keywords()).split(u','))
        findings.addToList(u"kMDItemKeywords"_s, word);
    findings.add(u"kMDItemCreator"_s, textOf(document.get_creator()));
    findings.addToList(u"kMDItemEncodingApplications"_s, textOf(document.get_producer()));
    constexpr time_t None = -1;
    if (const time_t made = document.get_creation_date_t(); made != None && made != 0)
        findings.add(u"kMDItemContentCreationDate"_s, QDateTime::fromSecsSinceEpoch(made));
    int major = 0;
    int minor = 0;
    document.get_pdf_version(&major, &minor);
    findings.add(u"kMDItemVersion"_s, u"%1.%2"_s.arg(major).arg(minor));
    findings.add(u"kMDItemNumberOfPages"_s, qint64(document.pages()));
    findings.add(u"kMDItemSecurityMethod"_s,
                 document.is_encrypted() ? u"Password Encrypted"_s : u"None"_s);
}

} // namespace

ForeignFiles::Outcome readPdf(QByteArrayView bytes, Findings &findings)
{
    using Outcome = ForeignFiles::Outcome;
    if (bytes.isEmpty() || bytes.size() > INT_MAX)
        return Outcome::Failed;
    const std::unique_ptr<poppler::document> document(
        poppler::document::load_from_raw_data(bytes.data(), int(bytes.size())));
    if (!document)
        return Outcome::Failed;
    if (document->is_locked())
        return Outcome::Nothing;
    readProperties(*document, findings);
    const int pages = document->pages();
    for (int number = 0; number < pages; ++number) {
        if (findings.isOver())
            break;
        const std::unique_ptr<poppler::page> page(document->create_page(number));
        if (!page)
            continue;
        findings.addText(
            textOf(page->text(poppler::rectf(), poppler::page::non_raw_non_physical_layout))
                .trimmed()); // of the form feed, too
        findings.addBreak();
    }
    return Outcome::Read;
}
