#include "files/LinkFile.h"

#include "files/FileName.h"
#include "tests/support/TestFolder.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_LinkFile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void target();
};

void tst_LinkFile::target()
{
    const QByteArray link = "[Desktop Entry]\nType=Link\n";
    // The address that the limit of what is read cuts off at "/a/" leads nowhere.
    const QByteArray full = link + '#' + QByteArray(65536 - link.size() - 16, 'x') + '\n';
    QVERIFY((full + "URL=file:///a/b/c\n").left(65536).endsWith("URL=file:///a/"));
    const QList<std::pair<QByteArray, QString>> cases {
        { link + "URL=file:///a/b\n", u"/a/b"_s },
        { link + "URL=file:///a%FF", FileName::fromBytes("/a\xFF") },
        { "# x\r\n[Desktop Entry]\r\nURL=file:///a\r\nType=Link\r\n", u"/a"_s },
        { "[Desktop Entry]\nType = Link\nURL = file:///a\n", u"/a"_s },
        { link + "URL=file:///a%20b%23%C3%A4\n", u"/a b#ä"_s },
        { link + "URL=file://localhost/a\n", u"/a"_s },
        { link + "URL=file:/a\n", u"/a"_s },
        { link + "URL=FILE:///x/sub/\n", u"/x/sub"_s },
        { link + "URL=file:///x/./y/..//sub//\n", u"/x/sub"_s },
        { link + "URL=file:///\n", u"/"_s },
        { link + "URL=file://server/a\n", {} },
        { link + "URL=file:///etc%00/a\n", {} },
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

QTEST_APPLESS_MAIN(tst_LinkFile)
#include "tst_LinkFile.moc"
