#include "platform/desktop/ShowAddresses.h"

#include "files/FileUrls.h"
#include "platform/desktop/StartupToken.h"

#include <QTest>
#include <QVariant>

using namespace Qt::StringLiterals;

class tst_ShowAddresses : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatIsTaken_data()
    {
        QTest::addColumn<QStringList>("addresses");
        QTest::addColumn<QStringList>("paths");
        QTest::addColumn<QStringList>("words"); // one in each line
        const auto row = [](const char *name, const QStringList &addresses,
                            const QStringList &paths, const QStringList &words = {}) {
            QTest::newRow(name) << addresses << paths << words;
        };
        row("blank, slash at the end", { u"file:///a%20b/"_s }, { u"/a b"_s });
        row("not UTF-8", { u"file:///%FFx"_s }, { u"/\xDCFFx"_s });
        row("a host that is this one", { u"file://localhost/a"_s }, { u"/a"_s });
        row("twice, and by another writing", { u"file:///a"_s, u"FILE:/a/./"_s }, { u"/a"_s });
        row("never out of the root", { u"file:///../../etc"_s }, { u"/etc"_s });
        row("remote",
            { u"http://x/a"_s, u"smb://server/share"_s, u"file://server/a"_s, u"file:///b"_s },
            { u"/b"_s }, { u"'http://x/a' is remote"_s, u"is remote"_s, u"no file of this"_s });
        row("none", { u"/a"_s, u""_s, u"file:"_s, u"file:a"_s, u"file:///a%00b"_s }, {},
            { u"'/a' is no address"_s, u"no address"_s, u"no file"_s, u"no file"_s, u"no file"_s });
        row("deeper than any file", { u"file:///"_s + u"a/"_s.repeated(1'000'000) }, {},
            { u"no file"_s });
        row("breaks the log", { u"x:\n\x1B[2J"_s }, {}, { u"'x:\\n\\x1B[2J'"_s });
        row("long", { u"x:"_s + QString(1'000'000, u'y') }, {}, { u"y...' is remote"_s });
        row("many refused", QStringList(1'000'000, u"x:"_s), {},
            { u"x:"_s, u"x:"_s, u"x:"_s, u"x:"_s, u"x:"_s, u": 9995 more"_s,
              u": 990000 addresses beyond the first 10000"_s });
    }
    void whatIsTaken()
    {
        QFETCH(const QStringList, addresses);
        QFETCH(const QStringList, words);
        const ShowAddresses read = readShowAddresses(addresses);
        QTEST(read.paths, "paths");
        QCOMPARE(read.refusals.size(), words.size());
        for (qsizetype i = 0; i < words.size(); ++i) {
            QVERIFY2(read.refusals[i].contains(words[i]), qPrintable(read.refusals[i]));
            QVERIFY(read.refusals[i].size() < 400 && !read.refusals[i].contains(u'\n'));
        }
    }

    void aMillionItemsAreCutOff()
    {
        QStringList addresses;
        for (int i = 0; i < 1'000'000; ++i)
            addresses.append(u"file:///f%1"_s.arg(i));
        const ShowAddresses read = readShowAddresses(addresses);
        QCOMPARE(read.paths.size(), ShowAddresses::Most);
        QCOMPARE(read.refusals.size(), 1);
    }

    void tokensThatAreNone()
    {
        QCOMPARE(StartupToken::checked(u"host-1_TIME99"_s), "host-1_TIME99");
        for (const QVariant &word :
             { QVariant(u"a\nb"_s), QVariant(u"a b"_s), QVariant(u"\""_s), QVariant(u"\u00E4"_s),
               QVariant(QString(600, u'x')), QVariant(QVariantMap { { u"a"_s, 1 } }) })
            QCOMPARE(StartupToken::checked(word), QByteArray());
    }
};

QTEST_GUILESS_MAIN(tst_ShowAddresses)
#include "tst_ShowAddresses.moc"
