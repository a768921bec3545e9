#include "reader/Extraction.h"

#include "platform/ReaderWords.h"
#include "reader/Documents.h"
#include "reader/Html.h"
#include "reader/Kinds.h"
#include "reader/Mail.h"
#include "reader/Pdf.h"
#include "reader/PictureProperties.h"
#include "reader/PlainText.h"
#include "reader/RichText.h"
#include "reader/Sound.h"

namespace {

// At most as much of a text file as text is told, were each character a byte: where they are more,
// the rest is not worth the memory.
QByteArray textBytes(const FileBytes &file, Findings &findings)
{
    if (file.size() > ReaderWords::TextLimit)
        findings.cut();
    return file.read(0, ReaderWords::TextLimit);
}

} // namespace

ForeignFiles::Outcome extract(FileBytes &file, const QByteArray &name, Findings &findings)
{
    using Outcome = ForeignFiles::Outcome;
    const auto found = [&](bool read) { return read ? Outcome::Read : Outcome::Failed; };
    switch (kindOf(file.read(0, KindBytes), name)) {
    case Kind::Unknown:
        return Outcome::Nothing;
    case Kind::Pdf:
        return readPdf(file.mapped(), findings);
    case Kind::Zip:
        return readZippedDocument(file.mapped(), findings);
    case Kind::Picture:
        return found(readPicture(file.mapped(), findings));
    case Kind::HeifPicture:
        return found(readHeifPicture(file.mapped(), findings));
    case Kind::Sound:
        return found(readSound(file, name, findings));
    case Kind::Html:
        findings.setText(htmlText(decodedText(textBytes(file, findings)), findings));
        return Outcome::Read;
    case Kind::RichText:
        readRichText(textBytes(file, findings), findings);
        return Outcome::Read;
    case Kind::Mail:
        readMail(textBytes(file, findings), findings);
        return Outcome::Read;
    case Kind::Text:
        findings.setText(decodedText(textBytes(file, findings)));
        return Outcome::Read;
    }
    return Outcome::Nothing;
}
