#include "platform/FileName.h"
#include "platform/FileStatus.h"
#include "platform/PropertyList.h"
#include "platform/UserDefaults.h"
#include "tests/support/TestFolder.h"

#include <QRegularExpression>
#include <QTest>
#include <QTimeZone>

#include <limits>
#include <memory>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto Key = "TWKey"_L1;
constexpr auto Other = "TWOther"_L1;

const QByteArray plistStart = "<?xml version=\"1.0\"?><plist version=\"1.0\">";

} // namespace

class tst_UserDefaults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { folder = std::make_unique<TestFolder>(); }
    void valuesSurviveTheFile_data();
    void valuesSurviveTheFile();
    void fileIsWrittenOnceForManyChanges();
    void otherTypesAnswerNothing_data();
    void otherTypesAnswerNothing();
    void storedValuesHideGlobalOnes();
    void ownChangesAreMergedOverThoseOfOthers();
    void damagedFileIsSetAside_data();
    void damagedFileIsSetAside();
    void partOfAFileIsNeverTakenForTheWhole();
    void fileThatCannotBeReadStays();
    void settingsThatCannotBeWrittenStayInMemory();
    void linkKeepsLeadingToTheFile_data();
    void linkKeepsLeadingToTheFile();
    void newFilesAreTheUsersOwn();

private:
    QString file() const { return folder->path(u"settings.plist"_s); }
    QVariant readBack(QLatin1StringView key) const { return UserDefaults(file()).value(key); }

    std::unique_ptr<TestFolder> folder;
};

void tst_UserDefaults::valuesSurviveTheFile_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("yes") << QVariant(true);
    QTest::newRow("no") << QVariant(false);
    QTest::newRow("negative") << QVariant(qlonglong(-1));
    QTest::newRow("large") << QVariant(std::numeric_limits<qlonglong>::max());
    QTest::newRow("smallest") << QVariant(std::numeric_limits<qlonglong>::min());
    QTest::newRow("colour component") << QVariant(double(0.47058824F));
    QTest::newRow("third") << QVariant(1.0 / 3);
    QTest::newRow("whole double") << QVariant(1.0);
    QTest::newRow("tiny double") << QVariant(-1.5e-9);
    QTest::newRow("bytes") << QVariant(QByteArray("\0\xFF<", 3));
    QTest::newRow("no bytes") << QVariant(QByteArray(""));
    QTest::newRow("date") << QVariant(
        QDateTime(QDate(1999, 12, 31), QTime(23, 59, 58), QTimeZone::utc()));
    QTest::newRow("empty") << QVariant(QVariantList { u""_s, QVariantList(), QVariantMap() });
    const QString texts[] = {
        u" blanks around\t\n"_s,
        u"<&>\"' &amp; ]]>"_s,
        u"\r\n"_s,
        u"\x1B[0m\x01"_s,
        QString(QChar(0)) + u"after"_s,
        u"Grüße 日本 \U0001F600"_s,
        FileName::fromBytes("/a\xFF/\xC3\xED\xA0\x80\xEE\xBB"),
        QString(QChar(0xD800)) + QChar(0xDBFF),
        u"\uEF01\uEF00 \uEFFF\uE000\uF000"_s,
        u"\uFFFE\uFFFF\uFFFD"_s,
        u"--><!-- <?xml?>"_s,
    };
    for (int i = 0; i < int(std::size(texts)); ++i) {
        QTest::addRow("text %d", i) << QVariant(texts[i]);
        QTest::addRow("key %d", i)
            << QVariant(QVariantMap { { texts[i], QVariantMap { { texts[i], u"x"_s } } } });
    }
    QTest::newRow("empty key") << QVariant(QVariantMap { { u""_s, u"x"_s }, { u"b"_s, u"y"_s } });
}

void tst_UserDefaults::valuesSurviveTheFile()
{
    QFETCH(QVariant, value);
    {
        UserDefaults defaults(file());
        defaults.setValue(Key, value);
        defaults.setValue(Other, u"after"_s);
    }
    QCOMPARE(readBack(Key), value);
    QCOMPARE(readBack(Key).typeId(), value.typeId());
    QCOMPARE(readBack(Other).toString(), u"after"_s);
}

void tst_UserDefaults::fileIsWrittenOnceForManyChanges()
{
    UserDefaults defaults(file());
    for (int i = 0; i < 100; ++i)
        defaults.setValue(Key, i);
    QVERIFY(folder->names().isEmpty());
    QTRY_COMPARE(folder->names(), QStringList { u"settings.plist"_s });
    QCOMPARE(readBack(Key), QVariant(99LL));
}

void tst_UserDefaults::otherTypesAnswerNothing_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("boolean");
    QTest::addColumn<QVariant>("integer");
    QTest::addColumn<QVariant>("string");
    const QVariant none;
    QTest::newRow("boolean") << QVariant(true) << QVariant(true) << none << none;
    QTest::newRow("number") << QVariant(2) << QVariant(true) << QVariant(2) << QVariant(u"2"_s);
    QTest::newRow("zero") << QVariant(0) << QVariant(false) << QVariant(0) << QVariant(u"0"_s);
    QTest::newRow("digits") << QVariant(u"14"_s) << none << QVariant(14) << QVariant(u"14"_s);
    QTest::newRow("word") << QVariant(u"YES"_s) << none << none << QVariant(u"YES"_s);
    QTest::newRow("too large") << QVariant(1LL << 31) << QVariant(true) << none
                               << QVariant(u"2147483648"_s);
    QTest::newRow("huge double") << QVariant(1e300) << QVariant(true) << none
                                 << QVariant(u"1e+300"_s);
    QTest::newRow("list") << QVariant(QVariantList { 1 }) << none << none << none;
    QTest::newRow("dictionary") << QVariant(QVariantMap { { u"a"_s, 1 } }) << none << none << none;
    QTest::newRow("absent") << none << none << none << none;
}

void tst_UserDefaults::otherTypesAnswerNothing()
{
    QFETCH(QVariant, value);
    UserDefaults defaults(file());
    defaults.setValue(Key, value);
    const auto answer = [](const auto &optional) {
        return optional ? QVariant(*optional) : QVariant();
    };
    QTEST(answer(defaults.boolean(Key)), "boolean");
    QTEST(answer(defaults.integer(Key)), "integer");
    QTEST(answer(defaults.string(Key)), "string");
    QCOMPARE(defaults.array(Key).has_value(), value.typeId() == QMetaType::QVariantList);
    QCOMPARE(defaults.dictionary(Key).has_value(), value.typeId() == QMetaType::QVariantMap);
}

void tst_UserDefaults::storedValuesHideGlobalOnes()
{
    const QVariantMap global { { Key, u"global"_s }, { u"NSOnly"_s, 1 } };
    UserDefaults defaults(file(), global);
    defaults.setValue(Key, u"stored"_s);
    QCOMPARE(defaults.string(Key), u"stored"_s);
    QCOMPARE(defaults.dictionaryRepresentation(),
             (QVariantMap { { Key, u"stored"_s }, { u"NSOnly"_s, 1 } }));
    defaults.remove(Key);
    QCOMPARE(defaults.string(Key), u"global"_s);
    QVERIFY(defaults.synchronize());
    QVERIFY(!readBack("NSOnly"_L1).isValid());
    QVERIFY(!readBack(Key).isValid());
}

void tst_UserDefaults::ownChangesAreMergedOverThoseOfOthers()
{
    UserDefaults first(file());
    first.setValue(Key, u"first"_s);
    first.setValue("TWGone"_L1, true);
    QVERIFY(first.synchronize());

    UserDefaults second(file());
    second.setValue(Other, u"second"_s);
    second.setValue(Key, u"second"_s);
    QVERIFY(second.synchronize());
    first.remove("TWGone"_L1);
    QVERIFY(first.synchronize());

    QCOMPARE(readBack(Key).toString(), u"second"_s);
    QCOMPARE(readBack(Other).toString(), u"second"_s);
    QVERIFY(!readBack("TWGone"_L1).isValid());
    QCOMPARE(first.string(Other), u"second"_s);

    // A file taken away is written again with everything.
    QCOMPARE(unlink(FileName::toBytes(file())), 0);
    first.setValue(Key, u"again"_s);
    QVERIFY(first.synchronize());
    QCOMPARE(readBack(Other).toString(), u"second"_s);
}

void tst_UserDefaults::damagedFileIsSetAside_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("TWKey = 1\n");
    QTest::newRow("cut off") << plistStart + "<dict><key>TWKey</key><true/>";
    QTest::newRow("root is an array") << plistStart + "<array><true/></array></plist>";
    QTest::newRow("root is a text") << plistStart + "<string>dict</string></plist>";
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("binary, cut off") << QByteArray("bplist00\xD1\x01\x02");
}

void tst_UserDefaults::damagedFileIsSetAside()
{
    QFETCH(QByteArray, content);
    folder->write(u"settings.plist"_s, content);
    folder->write(u"settings.plist.damaged"_s, "older");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"settings.plist.damaged2"_s));
    UserDefaults defaults(file());
    QVERIFY(!defaults.contains(Key));
    defaults.setValue(Other, 1);
    QVERIFY(defaults.synchronize());
    QCOMPARE(folder->read(u"settings.plist.damaged"_s), "older");
    QCOMPARE(folder->read(u"settings.plist.damaged2"_s), content);
    QCOMPARE(readBack(Other), QVariant(1LL));
}

void tst_UserDefaults::partOfAFileIsNeverTakenForTheWhole()
{
    {
        UserDefaults defaults(file());
        defaults.setValue(
            Key, QVariantMap { { u"a"_s, u"<&\x01"_s }, { u"b"_s, QVariantList { 1, 2.5 } } });
        defaults.setValue(Other, QByteArray("bytes"));
    }
    const QByteArray whole = folder->read(u"settings.plist"_s);
    const auto all = PropertyList::read(whole);
    QVERIFY(all && all->size() == 2);
    for (qsizetype length = 0; length < whole.size(); ++length) {
        const auto part = PropertyList::read(whole.left(length));
        QVERIFY2(!part || part == all, whole.left(length).constData());
    }
}

void tst_UserDefaults::fileThatCannotBeReadStays()
{
    // A folder at the name cannot be read as a file by anybody, root included.
    folder->makeFolder(u"settings.plist"_s);
    QTest::failOnWarning(QRegularExpression(u"."_s));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"settings.plist"_s));
    UserDefaults defaults(file());
    defaults.setValue(Key, 1);
    QVERIFY(!defaults.synchronize());
    QVERIFY(!defaults.synchronize());
    QCOMPARE(defaults.integer(Key), 1);
    QCOMPARE(folder->names(), QStringList { u"settings.plist"_s });
}

void tst_UserDefaults::settingsThatCannotBeWrittenStayInMemory()
{
    folder->write(u"file"_s);
    QTest::failOnWarning(QRegularExpression(u"."_s));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"stay in memory"_s));
    UserDefaults defaults(folder->path(u"file/settings.plist"_s));
    defaults.setValue(Key, 1);
    QVERIFY(!defaults.synchronize());
    QCOMPARE(defaults.integer(Key), 1);
    // Kept for the next try.
    QCOMPARE(unlink(FileName::toBytes(folder->path(u"file"_s))), 0);
    QVERIFY(defaults.synchronize());
    QCOMPARE(UserDefaults(defaults.filePath()).integer(Key), 1);
}

void tst_UserDefaults::linkKeepsLeadingToTheFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("whole") << plistStart + "<dict><key>TWOther</key><true/></dict></plist>"
                           << QStringList { u"s.plist"_s };
    QTest::newRow("damaged") << QByteArray("damaged")
                             << QStringList { u"s.plist"_s, u"s.plist.damaged"_s };
    QTest::newRow("dangling") << QByteArray() << QStringList { u"s.plist"_s };
}

void tst_UserDefaults::linkKeepsLeadingToTheFile()
{
    QFETCH(QByteArray, content);
    if (!content.isEmpty()) {
        folder->makeFolder(u"dotfiles"_s);
        folder->write(u"dotfiles/s.plist"_s, content);
    }
    folder->link(u"dotfiles/s.plist"_s, u"second"_s);
    folder->link(folder->path(u"second"_s), u"settings.plist"_s);
    if (content == "damaged")
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"s.plist.damaged"_s));
    {
        UserDefaults defaults(file());
        defaults.setValue(Key, 1);
        QVERIFY(defaults.synchronize());
    }
    QCOMPARE(linkTarget(file()), folder->path(u"second"_s));
    QTEST(folder->names(u"dotfiles"_s), "names");
    QCOMPARE(UserDefaults(folder->path(u"dotfiles/s.plist"_s)).integer(Key), 1);
}

void tst_UserDefaults::newFilesAreTheUsersOwn()
{
    const QString path = folder->path(u"new/config/settings.plist"_s);
    UserDefaults defaults(path);
    defaults.setValue(Key, 1);
    QVERIFY(defaults.synchronize());
    QCOMPARE(fileStatus(folder->path(u"new"_s), Links::NoFollow)->mode, mode_t(0700));
    QCOMPARE(fileStatus(path, Links::NoFollow)->mode, mode_t(0600));
    QCOMPARE(folder->names(u"new/config"_s), QStringList { u"settings.plist"_s });
}

QTEST_GUILESS_MAIN(tst_UserDefaults)
#include "tst_UserDefaults.moc"
