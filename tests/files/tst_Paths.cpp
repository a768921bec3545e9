#include "files/FileUrls.h"
#include "files/LinkFile.h"
#include "files/PathText.h"
#include "tests/support/TestFolder.h"

#include <QRandomGenerator>

// Names as bytes, the text of a path, and addresses of files.
class tst_Paths : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anyBytesSurvive()
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
        // Lead and continuation bytes at random, so that sequences are often almost right.
        const QByteArray interesting("\x41\x7F\x80\x9F\xA0\xB2\xBB\xBF\xC2"
                                     "\xC3\xE0\xE2\xED\xEE\xEF\xF0\xF4\xFF");
        QRandomGenerator random(1);
        for (int round = 0; round < 20000; ++round) {
            QByteArray bytes;
            for (auto left = random.bounded(1, 9); left > 0; --left)
                bytes += interesting[random.bounded(int(interesting.size()))];
            QCOMPARE(FileName::toBytes(FileName::fromBytes(bytes)), bytes);
        }
    }

    void shownTextIsOneSafeLine()
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

    void urlsBringEveryByteBack()
    {
        QByteArray bytes = "/";
        for (int byte = 1; byte < 256; ++byte)
            if (byte != '/')
                bytes += char(byte);
        const QStringList paths { FileName::fromBytes(bytes), u"/a b"_s, u"/#%?é"_s, u"/"_s };
        const QByteArray list = FileUrls::uriList(paths);
        QCOMPARE(FileUrls::pathsOf(list), paths);
        for (const char c : list) // nothing but plain characters travels
            QVERIFY(c == '\r' || c == '\n' || (c > ' ' && c < 0x7F));
    }

    void onlyUrlsOfFilesOfThisMachineAreTaken()
    {
        const std::pair<QByteArray, QString> cases[] = {
            { "#x\r\nfile:///a%20b%23%C3%A4/\r\n", u"/a b#ä"_s },
            { "file:///x/./y/..//sub//", u"/x/sub"_s },
            { "file:///", u"/"_s },
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

    void linkFilesLeadToFilesOfThisMachine()
    {
        const QByteArray link = "[Desktop Entry]\nType=Link\n";
        // The address that the limit of what is read cuts off at "/a/" leads nowhere.
        const QByteArray full = link + '#' + QByteArray(65536 - link.size() - 16, 'x') + '\n';
        QVERIFY((full + "URL=file:///a/b/c\n").left(65536).endsWith("URL=file:///a/"));
        const std::pair<QByteArray, QString> cases[] = {
            { link + "URL=file:///a%FF", FileName::fromBytes("/a\xFF") },
            { "# x\r\n[Desktop Entry]\r\nURL=file:///a\r\nType=Link\r\n", u"/a"_s },
            { "[Desktop Entry]\nType = Link\nURL = file:///a\n", u"/a"_s },
            { link + "URL=https://example.org/\n", {} },
            { link, {} },
            { "[Desktop Entry]\nType=Application\nURL=file:///a\n", {} },
            { link + "[Desktop Action x]\nURL=file:///a\n", {} },
            { "", {} },
            { full + "URL=file:///a/b/c\n", {} },
        };
        const TestFolder folder;
        for (const auto &[content, path] : cases) {
            folder.write(u"x.desktop"_s, content);
            const auto found = LinkFile::target(folder.path(u"x.desktop"_s));
            QVERIFY2(found.has_value() == !path.isNull(), content.right(80));
            QCOMPARE(found.value_or(QString()), path);
        }
    }

    void partsOfAPath()
    {
        const std::tuple<QString, QString, QString, QStringList> cases[] = {
            { u"/"_s, u"/"_s, u"/"_s, { u"/"_s } },
            { u"///"_s, u"/"_s, u"/"_s, { u"/"_s } },
            { u"/a"_s, u"/"_s, u"a"_s, { u"/"_s, u"a"_s } },
            { u"/a/b//"_s, u"/a"_s, u"b"_s, { u"/"_s, u"a"_s, u"b"_s } },
            { u"//a//b"_s, u"//a"_s, u"b"_s, { u"/"_s, u"a"_s, u"b"_s } },
            { {}, {}, {}, {} },
        };
        for (const auto &[path, parent, last, components] : cases) {
            QCOMPARE(PathText::parent(path), parent);
            QCOMPARE(PathText::lastComponent(path), last);
            QCOMPARE(PathText::components(path), components);
        }
        const std::tuple<QString, QString, QString> extensions[] = {
            { u"/x/a.tar.gz"_s, u"gz"_s, u"/x/a.tar"_s },  { u"/x.d/a"_s, u""_s, u"/x.d/a"_s },
            { u"/x/.profile"_s, u""_s, u"/x/.profile"_s }, { u"/x/a."_s, u""_s, u"/x/a."_s },
            { u"/x/a.app/"_s, u"app"_s, u"/x/a"_s },       { u"/"_s, u""_s, u"/"_s },
        };
        for (const auto &[path, extension, rest] : extensions) {
            QCOMPARE(PathText::extension(path), extension);
            QCOMPARE(PathText::withoutExtension(path), rest);
        }
    }

    void typedPathsAndNames()
    {
        qputenv("HOME", "/home/x");
        const std::pair<QString, QString> paths[] = {
            { u"/a//b/"_s, u"/a/b"_s },
            { u"/a/./b/../c"_s, u"/a/c"_s },
            { u"/../.."_s, u"/"_s },
            { u"~"_s, u"/home/x"_s },
            { u"~/a b/"_s, u"/home/x/a b"_s },
            { u"~other/a"_s, u""_s },
            { u"a/b"_s, u""_s },
            { u""_s, u""_s },
        };
        for (const auto &[typed, path] : paths)
            QCOMPARE(PathText::fromTyped(typed), path);
        for (const QString &name : { u"a"_s, u"..a"_s, u" "_s })
            QVERIFY2(PathText::isItemName(name), qUtf8Printable(name));
        for (const QString &name : { u""_s, u"."_s, u".."_s, u"a/b"_s, u"a\0b"_s })
            QVERIFY2(!PathText::isItemName(name), qUtf8Printable(name));
    }
};

QTEST_GUILESS_MAIN(tst_Paths)
#include "tst_Paths.moc"
