#include "platform/FileUrls.h"

#include "platform/FileName.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_FileUrls : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyByteComesBack();
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

void tst_FileUrls::onlyFilesOfThisMachineAreTaken()
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

QTEST_GUILESS_MAIN(tst_FileUrls)
#include "tst_FileUrls.moc"
