#include "util/LinkFile.h"

#include "platform/FileName.h"
#include "tests/support/TestFolder.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_LinkFile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void target_data();
    void target();
    void urlCutOffByTheLimitLeadsNowhere();

private:
    const TestFolder folder;
};

void tst_LinkFile::target_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("path"); // null: no link file
    const QByteArray link = "[Desktop Entry]\nType=Link\n";
    const QString none;
    QTest::newRow("plain") << link + "URL=file:///a/b\n" << u"/a/b"_s;
    QTest::newRow("bytes that are no text")
        << link + "URL=file:///a%FF" << FileName::fromBytes("/a\xFF");
    QTest::newRow("other order, other system")
        << QByteArray("# x\r\n[Desktop Entry]\r\nURL=file:///a\r\nType=Link\r\n") << u"/a"_s;
    QTest::newRow("blanks around the sign")
        << QByteArray("[Desktop Entry]\nType = Link\nURL = file:///a\n") << u"/a"_s;
    QTest::newRow("encoded") << link + "URL=file:///a%20b%23%C3%A4\n" << u"/a b#ä"_s;
    QTest::newRow("host of our own") << link + "URL=file://localhost/a\n" << u"/a"_s;
    QTest::newRow("no host part") << link + "URL=file:/a\n" << u"/a"_s;
    QTest::newRow("another host") << link + "URL=file://server/a\n" << none;
    QTest::newRow("NUL in it") << link + "URL=file:///etc%00/a\n" << none;
    QTest::newRow("web page") << link + "URL=https://example.org/\n" << none;
    QTest::newRow("no address") << link << none;
    QTest::newRow("application") << QByteArray("[Desktop Entry]\nType=Application\nURL=file:///a\n")
                                 << none;
    QTest::newRow("other group") << link + "[Desktop Action x]\nURL=file:///a\n" << none;
    QTest::newRow("empty") << QByteArray() << none;
}

void tst_LinkFile::target()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, path);
    folder.write(u"x.desktop"_s, content);
    const auto found = LinkFile::target(folder.path(u"x.desktop"_s));
    QCOMPARE(found.has_value(), !path.isNull());
    QCOMPARE(found.value_or(QString()), path);
}

void tst_LinkFile::urlCutOffByTheLimitLeadsNowhere()
{
    QByteArray content = "[Desktop Entry]\nType=Link\n#";
    content += QByteArray(65536 - content.size() - 15, 'x') + "\nURL=file:///a/b/c\n";
    folder.write(u"x.desktop"_s, content);
    QVERIFY(content.left(65536).endsWith("URL=file:///a/"));
    QVERIFY(!LinkFile::target(folder.path(u"x.desktop"_s)));
}

QTEST_APPLESS_MAIN(tst_LinkFile)
#include "tst_LinkFile.moc"
