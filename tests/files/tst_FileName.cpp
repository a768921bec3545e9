#include "files/FileName.h"
#include "files/FileUrls.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_FileName : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void bytesSurvive();
    void anyBytesSurvive();
    void shownTextIsOneSafeLine();
    void urlsBringEveryByteBack();
    void onlyUrlsOfFilesOfThisMachineAreTaken();
};

void tst_FileName::bytesSurvive()
{
    const auto lone = [](std::initializer_list<char16_t> units) {
        return QString(reinterpret_cast<const QChar *>(units.begin()), qsizetype(units.size()));
    };
    const std::pair<QByteArray, QString> cases[] = {
        { "a b\n", u"a b\n"_s },
        { "\xC3\xA4", u"\u00E4"_s }, // composed and decomposed are two names
        { "a\xCC\x88", u"a\u0308"_s },
        { "\xF0\x9F\x98\x80", u"\U0001F600"_s },
        { "M\xFCll", u"M"_s + lone({ 0xDCFC }) + u"ll"_s },
        { "x\xE2\x82", u"x"_s + lone({ 0xDCE2, 0xDC82 }) }, // cut off
        { "\xC0\xAF", lone({ 0xDCC0, 0xDCAF }) }, // overlong slash
        { "\xED\xB2\x80", lone({ 0xDCED, 0xDCB2, 0xDC80 }) }, // encoded surrogate
        { "\xF4\x90\x80\x80", lone({ 0xDCF4, 0xDC90, 0xDC80, 0xDC80 }) }, // past Unicode
        { "\xEF\xBB\xBFname", u"\uFEFFname"_s }, // byte order marks
        { "\xFF\xEF\xBB\xBF", lone({ 0xDCFF, 0xFEFF }) },
    };
    for (const auto &[bytes, path] : cases) {
        QCOMPARE(FileName::fromBytes(bytes), path);
        QCOMPARE(FileName::toBytes(path), bytes);
    }
}

void tst_FileName::anyBytesSurvive()
{
    // Lead and continuation bytes at random, so that sequences are often almost right.
    constexpr unsigned char interesting[] = {
        0x41, 0x7F, 0x80, 0x9F, 0xA0, 0xB2, 0xBB, 0xBF, 0xC2,
        0xC3, 0xE0, 0xE2, 0xED, 0xEE, 0xEF, 0xF0, 0xF4, 0xFF
    };
    QRandomGenerator random(1);
    for (int round = 0; round < 20000; ++round) {
        QByteArray bytes;
        for (auto left = random.bounded(1, 9); left > 0; --left)
            bytes += char(interesting[random.bounded(quint32(std::size(interesting)))]);
        QCOMPARE(FileName::toBytes(FileName::fromBytes(bytes)), bytes);
    }
}

void tst_FileName::shownTextIsOneSafeLine()
{
    const std::pair<QString, QString> cases[] = {
        { u"Grüße \U0001F600.txt"_s, u"Grüße \U0001F600.txt"_s },
        { u"a\nb\r\t"_s, u"a\\nb\\r\\t"_s },
        { u"\x1B[31m"_s, u"\\x1B[31m"_s },
        { u"\u0085"_s, u"\\x85"_s },
        { u"a\u202Egpj.exe"_s, u"a\\u202Egpj.exe"_s },
        { u"a\u2029b"_s, u"a\\u2029b"_s },
        { FileName::fromBytes("M\xFCll"), u"M\uFFFDll"_s },
    };
    for (const auto &[name, shown] : cases)
        QCOMPARE(FileName::shown(name), shown);
}

void tst_FileName::urlsBringEveryByteBack()
{
    QByteArray bytes = "/";
    for (int byte = 1; byte < 256; ++byte)
        if (byte != '/')
            bytes += char(byte);
    const QStringList paths { FileName::fromBytes(bytes), u"/a b"_s, u"/#%?é"_s, u"/"_s };
    const QByteArray list = FileUrls::uriList(paths);
    QCOMPARE(FileUrls::pathsOf(list), paths);
    // Nothing but plain characters travels.
    QVERIFY(std::all_of(list.begin(), list.end(),
                        [](char c) { return c == '\r' || c == '\n' || (c > ' ' && c < 0x7F); }));
}

void tst_FileName::onlyUrlsOfFilesOfThisMachineAreTaken()
{
    const std::pair<QByteArray, QString> cases[] = {
        { "#x\r\nfile:///a%20b/\r\n", u"/a b"_s },
        { "file:///a", u"/a"_s },
        { "file:/a", u"/a"_s },
        { "FILE://LocalHost/a", u"/a"_s },
        { "file://" + QSysInfo::machineHostName().toUtf8() + "/a", u"/a"_s },
    };
    for (const auto &[list, path] : cases)
        QCOMPARE(FileUrls::pathsOf(list), QStringList { path });
    for (const char *list : { "", "#x\r\n", "file://other.example/a", "https://a/b", "file:a",
                              "file:///a\r\nsftp://h/b\r\n", "file:///a%00b" })
        QVERIFY2(!FileUrls::pathsOf(list), list);
}

QTEST_GUILESS_MAIN(tst_FileName)
#include "tst_FileName.moc"
