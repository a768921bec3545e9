#include "platform/FileFlags.h"
#include "platform/FileName.h"
#include "tests/support/TestFolder.h"

#include <QtEndian>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

struct Attribute {
    const char *name;
    QByteArray value;
};
using Attributes = QList<Attribute>;

QByteArray finderInfo(quint16 flags)
{
    QByteArray info(32, '\0');
    qToBigEndian(flags, info.data() + 8);
    return info;
}

// An AppleDouble header with one entry.
QByteArray appleDouble(quint16 entries, quint32 id, quint32 offset, quint16 flags)
{
    QByteArray header(38, '\0');
    qToBigEndian(entries, header.data() + 24);
    qToBigEndian(id, header.data() + 26);
    qToBigEndian(offset, header.data() + 30);
    return header + finderInfo(flags);
}

constexpr auto Label = "user.twinleaf.label";
constexpr auto Tags = "user.xdg.tags";
constexpr auto Finder = "user.com.apple.FinderInfo";
constexpr auto Netatalk = "user.org.netatalk.Metadata";

} // namespace

class tst_FileFlags : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void marksComeFromTheFirstThatAnswers_data();
    void marksComeFromTheFirstThatAnswers();
    void marksFollowLinksAndLocksDoNot();
    void hiddenNamesAreBytes();
    void hiddenFileThatIsNoFileIsNotRead();

private:
    TestFolder folder;
};

void tst_FileFlags::marksComeFromTheFirstThatAnswers_data()
{
    QTest::addColumn<Attributes>("attributes");
    QTest::addColumn<int>("labelBits");
    QTest::addColumn<bool>("invisible");
    QTest::addColumn<bool>("alias");
    QTest::newRow("none") << Attributes {} << 0 << false << false;
    QTest::newRow("red") << Attributes { { Label, "1" } } << 0x0C << false << false;
    QTest::newRow("grey") << Attributes { { Label, "7" } } << 0x02 << false << false;
    QTest::newRow("no label hides the others")
        << Attributes { { Label, "0" }, { Tags, "Red" }, { Finder, finderInfo(0x06) } } << 0
        << false << false;
    QTest::newRow("a label that is none")
        << Attributes { { Label, "8" }, { Tags, "red" } } << 0x0C << false << false;
    QTest::newRow("first colour of the tags")
        << Attributes { { Tags, "holiday, GRAY ,Red" }, { Finder, finderInfo(0x06) } } << 0x02
        << false << false;
    QTest::newRow("tags without a colour")
        << Attributes { { Tags, "holiday,Reddish" }, { Finder, finderInfo(0x06) } } << 0x06 << false
        << false;
    QTest::newRow("flags beside a label")
        << Attributes { { Label, "7" }, { Finder, finderInfo(0xC00C) } } << 0x02 << true << true;
    QTest::newRow("flags beyond the label")
        << Attributes { { Finder, finderInfo(0x3FF1) } } << 0 << false << false;
    QTest::newRow("cut off") << Attributes { { Finder, "12345678\xFF" } } << 0 << false << false;
    QTest::newRow("AppleDouble") << Attributes { { Netatalk, appleDouble(1, 9, 38, 0x8004) } }
                                 << 0x04 << false << true;
    QTest::newRow("AppleDouble, other entry")
        << Attributes { { Netatalk, appleDouble(1, 8, 38, 0x8004) } } << 0 << false << false;
    QTest::newRow("AppleDouble, past the end")
        << Attributes { { Netatalk, appleDouble(1, 9, 0xFFFFFFF0, 0x8004) } } << 0 << false
        << false;
    QTest::newRow("AppleDouble, more entries than bytes")
        << Attributes { { Netatalk, appleDouble(0xFFFF, 8, 38, 0x8004) } } << 0 << false << false;
}

void tst_FileFlags::marksComeFromTheFirstThatAnswers()
{
    QFETCH(Attributes, attributes);
    QFETCH(int, labelBits);
    const QString name = QString::fromUtf8(QTest::currentDataTag());
    folder.write(name);
    for (const Attribute &attribute : attributes) {
        if (!folder.setAttribute(name, attribute.name, attribute.value))
            QSKIP("no attributes on this file system");
    }
    const auto marks = FileFlags::marks(folder.path(name));
    QCOMPARE(int(marks.labelBits), labelBits);
    QTEST(marks.invisible, "invisible");
    QTEST(marks.alias, "alias");
}

void tst_FileFlags::marksFollowLinksAndLocksDoNot()
{
    folder.write(u"marked"_s);
    folder.link(u"marked"_s, u"link"_s);
    if (!folder.setAttribute(u"marked"_s, Label, "1"))
        QSKIP("no attributes on this file system");
    folder.setAttribute(u"marked"_s, "user.twinleaf.locked", "1");
    QCOMPARE(FileFlags::marks(folder.path(u"link"_s)).labelBits, quint8(0x0C));
    QVERIFY(FileFlags::isLocked(folder.path(u"marked"_s)));
    QVERIFY(!FileFlags::isLocked(folder.path(u"link"_s)));
    QVERIFY(!FileFlags::isLocked(folder.path(u"missing"_s)));
}

void tst_FileFlags::hiddenNamesAreBytes()
{
    folder.makeFolder(u"hiding"_s);
    folder.write(u"hiding/.hidden"_s, "one\n\n two \n\xFF\nlast");
    QCOMPARE(FileFlags::hiddenNames(folder.path(u"hiding"_s)),
             (QSet<QByteArray> { "one", " two ", "\xFF", "last" }));
    QVERIFY(FileFlags::hiddenNames(folder.path(u"missing"_s)).isEmpty());
}

void tst_FileFlags::hiddenFileThatIsNoFileIsNotRead()
{
    folder.makeFolder(u"waiting"_s);
    QCOMPARE(mkfifo(FileName::toBytes(folder.path(u"waiting/.hidden"_s)), 0600), 0);
    QVERIFY(FileFlags::hiddenNames(folder.path(u"waiting"_s)).isEmpty());
}

QTEST_GUILESS_MAIN(tst_FileFlags)
#include "tst_FileFlags.moc"
