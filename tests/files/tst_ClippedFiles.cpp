#include "files/ClippedFiles.h"

#include "files/FileName.h"

#include <QTest>

using namespace Qt::StringLiterals;
using ClippedFiles::Intent;

namespace {

using Offer = QList<std::pair<QString, QByteArray>>; // formats and what they hold

ClippedFiles::Clip readOffer(const Offer &offer)
{
    QStringList formats;
    for (const auto &[format, bytes] : offer)
        formats.append(format);
    const QStringList wanted = ClippedFiles::wanted(formats);
    QList<QByteArray> contents;
    for (const QString &format : wanted)
        contents.append(offer[formats.indexOf(format)].second);
    return ClippedFiles::read(wanted, contents);
}

} // namespace

class tst_ClippedFiles : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatOtherProgramsOfferIsUnderstood_data()
    {
        QTest::addColumn<Offer>("offer");
        QTest::addColumn<QString>("read"); // "cut" or "copy", paths, then "|" and what is none
        const QString list = u"text/uri-list"_s, gnome = u"x-special/gnome-copied-files"_s,
                      mate = u"x-special/mate-copied-files"_s, text = u"text/plain"_s,
                      mark = u"application/x-kde-cutselection"_s;
        const auto row = [](const char *name, const Offer &offer, const QString &read) {
            QTest::newRow(name) << offer << read;
        };
        row("cut", { { gnome, "cut\nfile:///a\nfile:///b" } }, u"cut /a /b |"_s);
        row("copy", { { text, "/a" }, { gnome, "copy\nfile:///a%20b\n" } }, u"copy /a b |"_s);
        row("the word decides", { { list, "file:///a\r\n" }, { mate, "cut\r\nfile:///a\r\n" } },
            u"cut /a |"_s);
        row("no word", { { gnome, "file:///a" } }, u"copy /a |"_s);
        row("a word alone", { { gnome, "cut" } }, u"cut |"_s);
        row("plain list", { { list, "#x\r\nfile:///a\r\n" } }, u"copy /a |"_s);
        row("mark", { { mark, "1" }, { list, "file:///a\r\n" } }, u"cut /a |"_s);
        row("mark unset", { { list, "file:///a\r\n" }, { mark, "0" } }, u"copy /a |"_s);
        row("text alone", { { text, "/a" } }, u"copy |"_s);
        row("mark alone", { { mark, "1" } }, u"copy |"_s);
        row("nothing", { { gnome, QByteArray() } }, u"copy |"_s);
        row("each once", { { list, "file:///a\nfile:///b\nfile:///./a\nfile:/a" } },
            u"copy /a /b |"_s);
        row("elsewhere",
            { { list, "sftp://h/x\nfile:///a\nfile:///b%00c\nrubbish\nfile://h.example/" } },
            u"copy /a | sftp://h/x file:///b%00c rubbish file://h.example/"_s);
    }
    void whatOtherProgramsOfferIsUnderstood()
    {
        QFETCH(Offer, offer);
        QFETCH(QString, read);
        const auto clip = readOffer(offer);
        QCOMPARE((QStringList { clip.intent == Intent::Cut ? u"cut"_s : u"copy"_s } + clip.paths
                  + QStringList { u"|"_s } + clip.others)
                     .join(u' '),
                 read);
    }

    void everyNameComesBackFromEachFormat()
    {
        const QStringList paths { u"/plain"_s,
                                  u"/a b#%"_s,
                                  u"/line\nbreak\r"_s,
                                  u"/ä"_s,
                                  FileName::fromBytes("/\xff\xfe"),
                                  u"/file:"_s };
        for (const Intent intent : { Intent::Copy, Intent::Cut }) {
            QList<Offer> offers { {} }; // all, then those that hold addresses, alone
            for (const QString &format : ClippedFiles::formats(intent)) {
                const auto each = std::pair(format, ClippedFiles::written(format, paths, intent));
                offers.first().append(each);
                if (!ClippedFiles::wanted({ format }).isEmpty())
                    offers.append({ each });
            }
            QCOMPARE(offers.size(), 4);
            for (const Offer &offer : std::as_const(offers)) {
                const auto clip = readOffer(offer);
                QCOMPARE(clip.paths, paths);
                QCOMPARE(clip.others, QStringList());
                // A list alone does not say.
                if (offer.first().first != u"text/uri-list" || offer.size() > 1)
                    QCOMPARE(clip.intent, intent);
            }
            QCOMPARE(ClippedFiles::written(u"text/plain"_s, { paths[4], paths[0] }, intent),
                     "/\xff\xfe\n/plain");
        }
    }
};

QTEST_GUILESS_MAIN(tst_ClippedFiles)
#include "tst_ClippedFiles.moc"
