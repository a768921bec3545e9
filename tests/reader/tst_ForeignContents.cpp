#include "platform/ReaderProcess.h"
#include "tests/reader/Samples.h"

#include <QDateTime>

using namespace Samples;
using Outcome = ForeignFiles::Outcome;
using Properties = QVariantMap;

Q_DECLARE_METATYPE(ForeignFiles::Outcome)

// What files of each kind say of themselves, as the running program tells it.
class tst_ForeignContents : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("PATH", TWINLEAF_READER_FOLDER ":" + qgetenv("PATH")); }
    void kindsTell_data();
    void kindsTell();
    void charsetsAreMadeOut_data();
    void charsetsAreMadeOut();

private:
    ForeignContents contentsOf(const QString &name, const QByteArray &bytes, Outcome expected)
    {
        _folder.write(name, bytes);
        ForeignContents contents;
        const Outcome outcome = _reader.read(opened(_folder, name).number(), name, contents);
        QTest::qCompare(int(outcome), int(expected), "outcome", "expected", __FILE__, __LINE__);
        return contents;
    }

    TestFolder _folder;
    ReaderProcess _reader;
};

void tst_ForeignContents::kindsTell_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Outcome>("outcome");
    QTest::addColumn<Properties>("properties");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *what, const QString &name, const QByteArray &bytes,
                        const Properties &properties, const QString &text,
                        Outcome outcome = Outcome::Read) {
        QTest::newRow(what) << name << bytes << outcome << properties << text;
    };
    row("a PDF, whatever its name", u"plan.txt"_s, pdf("The first words"),
        { { u"kMDItemTitle"_s, u"A plan"_s },
          { u"kMDItemAuthors"_s, QStringList { u"Ann Other"_s } },
          { u"kMDItemKeywords"_s, QStringList { u"one"_s, u"two"_s } },
          { u"kMDItemNumberOfPages"_s, 1LL },
          { u"kMDItemContentCreationDate"_s, QDateTime({ 2020, 1, 2 }, { 3, 4, 5 }, Qt::UTC) } },
        u"The first words\n"_s);
    row("OpenDocument", u"letter.odt"_s,
        zip({ { "mimetype", "application/vnd.oasis.opendocument.text" },
              { "content.xml",
                "<o:d xmlns:o='o' xmlns:t='t'><o:styles>no</o:styles><t:h>Head</t:h>"
                "<t:p>wor<t:span>ds</t:span><t:s/>apart<t:line-break/>below</t:p></o:d>" },
              { "meta.xml",
                "<m xmlns:dc='dc' xmlns:meta='urn:oasis:names:tc:opendocument:xmlns:meta:1.0'>"
                "<dc:title>A letter</dc:title><meta:initial-creator>Ann</meta:initial-creator>"
                "<dc:creator>Ben</dc:creator><meta:keyword>k</meta:keyword>"
                "<meta:document-statistic meta:page-count='3'/></m>" } }),
        { { u"kMDItemTitle"_s, u"A letter"_s },
          { u"kMDItemAuthors"_s, QStringList { u"Ann"_s, u"Ben"_s } },
          { u"kMDItemKeywords"_s, QStringList { u"k"_s } },
          { u"kMDItemNumberOfPages"_s, 3LL } },
        u"Head\nwords apart below\n"_s);
    row("words of Office Open XML", u"letter.docx"_s,
        zip({ { "word/document.xml",
                "<w:d xmlns:w='w'><w:p><w:t>wor</w:t><w:t>ds</w:t><w:tab/><w:t>apart</w:t>"
                "<w:instrText>no</w:instrText><w:delText>no</w:delText></w:p></w:d>" },
              { "docProps/core.xml",
                "<c xmlns:d='d'><d:creator>Ann</d:creator><d:created>2020-01-02T03:04:05Z"
                "</d:created></c>" } }),
        { { u"kMDItemAuthors"_s, QStringList { u"Ann"_s } },
          { u"kMDItemContentCreationDate"_s, QDateTime({ 2020, 1, 2 }, { 3, 4, 5 }, Qt::UTC) } },
        u"words apart\n"_s);
    row("a sheet of it", u"sums.xlsx"_s,
        zip({ { "xl/sharedStrings.xml", "<s><si><t>shared</t><rPh><t>no</t></rPh></si></s>" },
              { "xl/worksheets/sheet1.xml",
                "<w><c t='s'><v>0</v></c><c><f>A1*2</f><v>12.5</v></c>"
                "<c t='inlineStr'><is><t>in</t></is></c></w>" } }),
        {}, u"shared\n12.5\nin\n"_s);
    row("a book", u"book.epub"_s,
        zip({ { "mimetype", "application/epub+zip" },
              { "b.opf", "<p xmlns:dc='dc'><dc:title>A book</dc:title></p>" },
              { "one.xhtml", "<html><title>One</title><p>First</p></html>" } }),
        { { u"kMDItemTitle"_s, u"A book"_s } }, u"First\n"_s);
    row("an archive of pages is no book", u"site.zip"_s, zip({ { "one.html", "<p>First</p>" } }),
        {}, {}, Outcome::Nothing);
    row("a photo", u"photo.jpg"_s,
        jpeg(twoColors(40, 30),
             [](Exiv2::Image &image) {
                 Exiv2::ExifData &exif = image.exifData();
                 exif["Exif.Image.Make"] = "Maker";
                 exif["Exif.Image.Model"] = "Model 5";
                 exif["Exif.Image.Orientation"] = uint16_t(6);
                 exif["Exif.Photo.DateTimeOriginal"] = "2021:02:03 04:05:06";
                 exif["Exif.Photo.OffsetTimeOriginal"] = "+02:00";
                 exif["Exif.Photo.ExposureTime"] = Exiv2::Rational(1, 8);
                 exif["Exif.Photo.FNumber"] = Exiv2::Rational(28, 0); // one that is no number
                 exif["Exif.Photo.ISOSpeedRatings"] = uint16_t(200);
                 exif["Exif.GPSInfo.GPSLatitudeRef"] = "S";
                 exif["Exif.GPSInfo.GPSLatitude"] = "10/1 30/1 0/1";
                 image.iptcData()["Iptc.Application2.Keywords"] = "harbour";
                 image.xmpData()["Xmp.dc.title"] = "lang=x-default Boats";
             }),
        { { u"kMDItemPixelWidth"_s, 40LL },
          { u"kMDItemPixelHeight"_s, 30LL },
          { u"kMDItemAcquisitionMake"_s, u"Maker"_s },
          { u"kMDItemAcquisitionModel"_s, u"Model 5"_s },
          { u"kMDItemOrientation"_s, 1LL },
          { u"kMDItemContentCreationDate"_s, QDateTime({ 2021, 2, 3 }, { 2, 5, 6 }, Qt::UTC) },
          { u"kMDItemExposureTimeSeconds"_s, 0.125 },
          { u"kMDItemFNumber"_s, {} },
          { u"kMDItemISOSpeed"_s, 200LL },
          { u"kMDItemLatitude"_s, -10.5 },
          { u"kMDItemKeywords"_s, QStringList { u"harbour"_s } },
          { u"kMDItemTitle"_s, u"Boats"_s } },
        {});
    row("a drawing's size", u"a.png"_s, encoded(twoColors(7, 5), "png"),
        { { u"kMDItemPixelWidth"_s, 7LL }, { u"kMDItemPixelHeight"_s, 5LL } }, {});
    row("HEIF", u"a.heic"_s, heif(twoColors(64, 48), heif_compression_HEVC),
        { { u"kMDItemPixelWidth"_s, 64LL }, { u"kMDItemPixelHeight"_s, 48LL } }, {});
    row("sound", u"a.wav"_s, wave(),
        { { u"kMDItemTitle"_s, u"A song"_s },
          { u"kMDItemAuthors"_s, QStringList { u"A singer"_s } },
          { u"kMDItemDurationSeconds"_s, 0.5 },
          { u"kMDItemAudioSampleRate"_s, 8000LL },
          { u"kMDItemAudioBitRate"_s, 128000LL },
          { u"kMDItemAudioChannelCount"_s, 2LL } },
        {});
    row("a tag alone", u"a.mp3"_s, id3("TALB", "Üben"), { { u"kMDItemAlbum"_s, u"Üben"_s } }, {});
    row("a page", u"page"_s,
        "<!DOCTYPE html><html><head><title>A &amp; B</title><meta name=author content='Ann'>"
        "<style>no</style><script>if (a<b) no</script></head><body><!-- <p>no --><h1>Head</h1>"
        "<p title='x>y'>wor<b>ds</b>  a&shy;part&nbsp;&eacute;&#8364;&unknown; 1 < 2<br>below"
        "<ul><li>one<li>two</ul></body>",
        { { u"kMDItemTitle"_s, u"A & B"_s }, { u"kMDItemAuthors"_s, QStringList { u"Ann"_s } } },
        u"Head\nwords a\u00ADpart é€&unknown; 1 < 2\nbelow\none\ntwo\n"_s);
    row("rich text", u"a.rtf"_s,
        R"({\rtf1\ansi{\fonttbl{\f0 no;}}{\info{\title A \'e4}{\author Ann}}{\*\new no}one\par)"
        "\n"
        R"(tw\u246?\'f6 \{\b three\}\tab 4})",
        { { u"kMDItemTitle"_s, u"A ä"_s }, { u"kMDItemAuthors"_s, QStringList { u"Ann"_s } } },
        u"one\ntwöö {three}\t4"_s);
    row("a message", u"a.eml"_s,
        "Subject: =?utf-8?B?R3LDvMOf?=\r\n =?iso-8859-1?Q?e_an?= all\r\nFrom: Ann <a@b>\r\n"
        "Date: Thu, 02 Jan 2020 03:04:05 +0000\r\nTo: Ben, Cem\r\n"
        "Content-Type: multipart/mixed;\r\n boundary=\"x\"\r\n\r\n"
        "--x\r\nContent-Type: multipart/alternative; boundary=y\r\n\r\n"
        "--y\r\nContent-Type: text/plain; charset=iso-8859-1\r\n"
        "Content-Transfer-Encoding: quoted-printable\r\n\r\nfor=20t=FC=\r\nr\r\n"
        "--y\r\nContent-Type: text/html\r\n\r\n<p>again</p>\r\n--y--\r\n"
        "--x\r\nContent-Type: application/pdf\r\n\r\nno\r\n--x--\r\n",
        { { u"kMDItemSubject"_s, u"Grüße an all"_s },
          { u"kMDItemAuthors"_s, QStringList { u"Ann <a@b>"_s } },
          { u"kMDItemRecipients"_s, QStringList { u"Ben"_s, u"Cem"_s } },
          { u"kMDItemContentCreationDate"_s, QDateTime({ 2020, 1, 2 }, { 3, 4, 5 }, Qt::UTC) } },
        u"for tür\r\n"_s);
    row("borders are whole lines, and words are what stands for all", u"a.eml"_s,
        "Content-Type: multipart/mixed; boundary=x\n\nno\n--x\n\nfirst--x\n--x \r\n"
        "Content-Type: multipart/alternative; boundary=x1\n\n"
        "--x1\nContent-Type: text/calendar\n\nno\n--x1\n\n \n"
        "--x1\nContent-Type: text/html\n\n<p>second\n--x1\n\nno\n--x1--\n"
        "--x\n\nthe last, cut",
        {}, u"first--x\n \nsecond \nthe last, cut\n"_s);
    row("plain text", u"a.txt"_s, "one\ntwo", {}, u"one\ntwo"_s);
    row("a drawing's words", u"a.svg"_s,
        "<?xml version='1.0'?><svg width='1in' height='100%' viewBox='0 0 10 20.4'><script/>"
        "<title>A</title><text>one</text></svg>",
        { { u"kMDItemTitle"_s, u"A"_s },
          { u"kMDItemPixelWidth"_s, 96LL },
          { u"kMDItemPixelHeight"_s, 20LL } },
        u"one\n"_s);
    row("text about other kinds", u"a.txt"_s, "MAC addresses, %PDF-1.4", {},
        u"MAC addresses, %PDF-1.4"_s);
    row("an empty file", u"a.txt"_s, {}, {}, {});
    row("what is no text", u"a.txt"_s,
        QByteArray("\x7F"
                   "ELF\2\1\0\0",
                   8),
        {}, {}, Outcome::Nothing);
    row("a broken PDF", u"a.pdf"_s, "%PDF-1.4\nnothing", {}, {}, Outcome::Failed);
}

void tst_ForeignContents::kindsTell()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(Outcome, outcome);
    QFETCH(Properties, properties);
    const ForeignContents contents = contentsOf(name, bytes, outcome);
    Properties told;
    for (const MetadataAttribute &attribute : contents.attributes)
        told.insert(attribute.name, attribute.value);
    for (auto expected = properties.cbegin(); expected != properties.cend(); ++expected)
        QCOMPARE(told.value(expected.key()), *expected);
    QTEST(contents.text, "text");
}

void tst_ForeignContents::charsetsAreMadeOut_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("UTF-8") << QByteArray("gr\xC3\xBC\xC3\x9F") << u"grüß"_s;
    QTest::newRow("its mark") << QByteArray("\xEF\xBB\xBFgr\xC3\xBC") << u"grü"_s;
    QTest::newRow("UTF-16") << QByteArray("\xFF\xFEg\0r\0\xFC\0", 8) << u"grü"_s;
    QTest::newRow("the western one") << QByteArray("gr\xFC \x80") << u"grü €"_s;
    QTest::newRow("declared in XML") << QByteArray("<?xml version='1.0' encoding='koi8-r'?>\xC1")
                                     << u"<?xml version='1.0' encoding='koi8-r'?>а"_s;
    QTest::newRow("declared for editors")
        << QByteArray("# coding: shift_jis\n\x82\xA0") << u"# coding: shift_jis\nあ"_s;
    QTest::newRow("declared, and none")
        << QByteArray("# coding: no-such\n\xFC") << u"# coding: no-such\nü"_s;
    QTest::newRow("with escapes") << QByteArray("# coding: iso-2022-jp\n\x1B$B$\"\x1B(B")
                                  << u"# coding: iso-2022-jp\nあ"_s;
}

void tst_ForeignContents::charsetsAreMadeOut()
{
    QFETCH(QByteArray, bytes);
    QTEST(contentsOf(u"text"_s, bytes, Outcome::Read).text, "text");
}

QTEST_GUILESS_MAIN(tst_ForeignContents)
#include "tst_ForeignContents.moc"
