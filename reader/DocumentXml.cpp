#include "reader/DocumentXml.h"

#include "platform/ReaderWords.h"

#include <QDateTime>
#include <QSet>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {

// Texts are gathered where `isWord` says so, and made a paragraph at the end of those in `breaks`.
struct Form {
    QSet<QString> words; // elements whose characters count; none: all of them
    QSet<QString> breaks; // paragraphs
    QSet<QString> spaces; // stand for a blank, a tabulator or a line end
    QSet<QString> skipped; // with all in them
};

void readText(QIODevice &part, const Form &form, Findings &findings)
{
    QXmlStreamReader xml(&part);
    int inWords = form.words.isEmpty() ? 1 : 0;
    while (!xml.atEnd() && !findings.isOver()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement: {
            const QString name = xml.name().toString();
            if (form.skipped.contains(name))
                xml.skipCurrentElement();
            else if (form.words.contains(name))
                ++inWords;
            else if (form.spaces.contains(name))
                findings.addText(u" ");
            break;
        }
        case QXmlStreamReader::EndElement: {
            const QString name = xml.name().toString();
            if (form.words.contains(name))
                --inWords;
            if (form.breaks.contains(name))
                findings.addBreak();
            break;
        }
        case QXmlStreamReader::Characters:
            if (inWords > 0)
                findings.addText(xml.text());
            break;
        default:
            break;
        }
    }
    findings.addBreak();
}

void addDate(const QString &name, const QString &text, Findings &findings)
{
    findings.add(name, QDateTime::fromString(text, Qt::ISODate));
}

void addKeywords(const QString &words, Findings &findings)
{
    for (const QString &word : words.split(words.contains(u';') ? u';' : u','))
        findings.addToList(u"kMDItemKeywords"_s, word);
}

void addNumber(const QString &name, QStringView text, Findings &findings)
{
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    if (isNumber && number > 0)
        findings.add(name, number);
}

void addProperty(const QString &element, const QString &text, Findings &findings)
{
    if (element == u"title")
        findings.add(u"kMDItemTitle"_s, text);
    else if (element == u"creator" || element == u"initial-creator")
        findings.addToList(u"kMDItemAuthors"_s, text);
    else if (element == u"lastModifiedBy")
        findings.addToList(u"kMDItemContributors"_s, text);
    else if (element == u"subject")
        findings.add(u"kMDItemSubject"_s, text);
    else if (element == u"description")
        findings.add(u"kMDItemDescription"_s, text);
    else if (element == u"keyword" || element == u"keywords")
        addKeywords(text, findings);
    else if (element == u"creation-date" || element == u"created")
        addDate(u"kMDItemContentCreationDate"_s, text, findings);
    else if (element == u"generator" || element == u"Application")
        findings.add(u"kMDItemCreator"_s, text);
    else if (element == u"Company")
        findings.addToList(u"kMDItemOrganizations"_s, text);
    else if (element == u"publisher")
        findings.addToList(u"kMDItemPublishers"_s, text);
    else if (element == u"language")
        findings.addToList(u"kMDItemLanguages"_s, text);
    else if (element == u"Pages" || element == u"Slides")
        addNumber(u"kMDItemNumberOfPages"_s, text, findings);
}

} // namespace

void readOpenDocumentText(QIODevice &part, Findings &findings)
{
    static const Form form {
        .words = { u"p"_s, u"h"_s },
        .breaks = { u"p"_s, u"h"_s },
        .spaces = { u"s"_s, u"tab"_s, u"line-break"_s },
        .skipped = { u"tracked-changes"_s, u"binary-data"_s, u"automatic-styles"_s },
    };
    readText(part, form, findings);
}

void readOfficeText(QIODevice &part, Findings &findings)
{
    static const Form form {
        .words = { u"t"_s },
        .breaks = { u"p"_s },
        .spaces = { u"tab"_s, u"br"_s, u"cr"_s },
        .skipped = { u"instrText"_s, u"delText"_s, u"Fallback"_s },
    };
    readText(part, form, findings);
}

void readSheet(QIODevice &part, Findings &findings)
{
    QXmlStreamReader xml(&part);
    bool isText = false;
    bool isShared = false; // the number is that of a text
    while (!xml.atEnd() && !findings.isOver()) {
        xml.readNext();
        const QStringView name = xml.name();
        if (xml.isStartElement()) {
            if (name == u"c")
                isShared = xml.attributes().value("t"_L1) == u"s";
            else if (name == u"rPh" || name == u"f") // how it is spoken; how it is reckoned
                xml.skipCurrentElement();
            else
                isText = name == u"t" || (name == u"v" && !isShared);
        } else if (xml.isEndElement()) {
            isText = false;
            if (name == u"si" || name == u"c")
                findings.addBreak();
        } else if (isText && xml.isCharacters()) {
            findings.addText(xml.text());
        }
    }
    findings.addBreak();
}

void readDocumentProperties(QIODevice &part, Findings &findings)
{
    QXmlStreamReader xml(&part);
    QString element;
    QString text;
    while (!xml.atEnd() && !findings.isOver()) {
        xml.readNext();
        if (xml.isStartElement()) {
            element = xml.name().toString();
            text.clear();
            if (element == u"document-statistic")
                addNumber(u"kMDItemNumberOfPages"_s,
                          xml.attributes().value(
                              "urn:oasis:names:tc:opendocument:xmlns:meta:1.0"_L1, "page-count"_L1),
                          findings);
        } else if (xml.isCharacters() && text.size() < ReaderWords::AttributeLimit) {
            text += xml.text();
        } else if (xml.isEndElement()) {
            addProperty(element, text.trimmed(), findings);
            element.clear();
        }
    }
}
