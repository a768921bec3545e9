#include "platform/FileUrls.h"

#include "platform/FileName.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_FileUrls : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyByteComesBack();
    void onlyFilesOfThisMachineAreTaken_data();
    void onlyFilesOfThisMachineAreTaken();
};

void tst_FileUrls::everyByteComesBack()
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

void tst_FileUrls::onlyFilesOfThisMachineAreTaken_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<QStringList>("paths");
    QTest::newRow("empty") << QByteArray() << QStringList();
    QTest::newRow("comment") << QByteArray("#x\r\nfile:///a%20b/\r\n") << QStringList { u"/a b"_s };
    QTest::newRow("no line end") << QByteArray("file:///a") << QStringList { u"/a"_s };
    QTest::newRow("short form") << QByteArray("file:/a") << QStringList { u"/a"_s };
    QTest::newRow("localhost") << QByteArray("file://localhost/a") << QStringList { u"/a"_s };
    QTest::newRow("other host") << QByteArray("file://other.example/a") << QStringList();
    QTest::newRow("web") << QByteArray("https://a/b") << QStringList();
    QTest::newRow("one of two is remote")
        << QByteArray("file:///a\r\nsftp://h/b\r\n") << QStringList();
    QTest::newRow("relative") << QByteArray("file:a") << QStringList();
    QTest::newRow("NUL") << QByteArray("file:///a%00b") << QStringList();
}

void tst_FileUrls::onlyFilesOfThisMachineAreTaken()
{
    QFETCH(QByteArray, list);
    QFETCH(QStringList, paths);
    const auto found = FileUrls::pathsOf(list);
    QCOMPARE(found.has_value(), !paths.isEmpty());
    QCOMPARE(found.value_or(QStringList()), paths);
}

QTEST_GUILESS_MAIN(tst_FileUrls)
#include "tst_FileUrls.moc"
