#include "files/FileName.h"
#include "files/FileSystem.h"
#include "settings/PropertyList.h"
#include "settings/UserDefaults.h"
#include "tests/support/TestTree.h"

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
    void valuesSurviveTheFile();
    void fileIsWrittenOnceForManyChanges();
    void otherTypesAnswerNothing();
    void storedValuesHideGlobalOnes();
    void ownChangesAreMergedOverThoseOfOthers();
    void damagedFileIsSetAside_data();
    void damagedFileIsSetAside();
    void partOfAFileIsNeverTakenForTheWhole();
    void whatCannotBeWrittenStaysInMemory_data();
    void whatCannotBeWrittenStaysInMemory();
    void linkKeepsLeadingToTheFile_data();
    void linkKeepsLeadingToTheFile();

private:
    QString file() const { return folder->path(u"settings.plist"_s); }
    QVariant readBack(QLatin1StringView key) const { return UserDefaults(file()).value(key); }

    std::unique_ptr<TestFolder> folder;
};

void tst_UserDefaults::valuesSurviveTheFile()
{
    constexpr auto most = std::numeric_limits<qlonglong>::max();
    constexpr double colourComponent = 0.47058824F;
    const QDateTime date(QDate(1999, 12, 31), QTime(23, 59, 58), QTimeZone::utc());
    QVariantList values;
    values << true << false << -1LL << most << -most - 1 << colourComponent << 1.0 / 3 << 1.0
           << -1.5e-9 << QByteArray("\0\xFF<", 3) << QByteArray("") << date
           << QVariant(QVariantList { u""_s, QVariantList(), QVariantMap() })
           << QVariantMap { { u""_s, u"x"_s }, { u"b"_s, u"y"_s } };
    QStringList texts;
    texts << u"<&>\"' &amp; ]]>"_s << u" blanks around\t\n"_s << u"\r\n"_s << u"\x1B[0m\x01"_s
          << QChar(0) + u"after"_s << u"--><!-- <?xml?>"_s << u"Grüße 日本 \U0001F600"_s
          << u"\uFFFE\uFFFF\uFFFD"_s << u"\uEF01\uEF00 \uEFFF\uE000\uF000"_s
          << QString(QChar(0xD800)) + QChar(0xDBFF)
          << FileName::fromBytes("/a\xFF/\xC3\xED\xA0\x80\xEE\xBB");
    for (const QString &text : std::as_const(texts))
        values << text << QVariantMap { { text, QVariantMap { { text, u"x"_s } } } };
    for (const QVariant &value : std::as_const(values)) {
        {
            UserDefaults defaults(file());
            defaults.setValue(Key, value);
            defaults.setValue(Other, u"after"_s);
        }
        QCOMPARE(readBack(Key), value);
        QCOMPARE(readBack(Key).typeId(), value.typeId());
        QCOMPARE(readBack(Other).toString(), u"after"_s);
        QVERIFY(!unlink(FileName::toBytes(file())));
    }
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

void tst_UserDefaults::otherTypesAnswerNothing()
{
    using Text = std::optional<QString>;
    const std::tuple<QVariant, std::optional<bool>, std::optional<int>, Text> cases[] = {
        { true, true, {}, {} },
        { 2, true, 2, u"2"_s },
        { 0, false, 0, u"0"_s },
        { 0.5, true, 0, u"0.5"_s },
        { u"14"_s, {}, 14, u"14"_s },
        { u"YES"_s, {}, {}, u"YES"_s },
        { 1LL << 31, true, {}, u"2147483648"_s },
        { -1e300, true, {}, u"-1e+300"_s },
        { QVariantList { 1 }, {}, {}, {} },
        { QVariantMap { { u"a"_s, 1 } }, {}, {}, {} },
        { {}, {}, {}, {} },
    };
    UserDefaults defaults(file());
    for (const auto &[value, boolean, integer, string] : cases) {
        defaults.setValue(Key, value);
        QVERIFY2(defaults.boolean(Key) == boolean, value.typeName());
        QVERIFY2(defaults.integer(Key) == integer, value.typeName());
        QVERIFY2(defaults.string(Key) == string, value.typeName());
        QCOMPARE(defaults.array(Key).has_value(), value.typeId() == QMetaType::QVariantList);
        QCOMPARE(defaults.dictionary(Key).has_value(), value.typeId() == QMetaType::QVariantMap);
    }
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
    const QVariantMap nested { { u"a"_s, u"<&\x01"_s }, { u"b"_s, QVariantList { 1LL, 2.5 } } };
    const QByteArray whole =
        PropertyList::toXml({ { Key, nested }, { Other, QByteArray("bytes") } });
    const auto all = PropertyList::read(whole);
    QVERIFY(all && all->value(Key) == nested && all->size() == 2);
    for (qsizetype length = 0; length < whole.size(); ++length) {
        const auto part = PropertyList::read(whole.left(length));
        QVERIFY2(!part || part == all, whole.left(length).constData());
    }
}

void tst_UserDefaults::whatCannotBeWrittenStaysInMemory_data()
{
    QTest::addColumn<QString>("inTheWay");
    // A folder at the name cannot be read as a file by anybody, root included.
    QTest::newRow("a folder at the name") << "conf/deep/settings.plist/";
    QTest::newRow("a file in place of the folder") << "conf";
}

void tst_UserDefaults::whatCannotBeWrittenStaysInMemory()
{
    QFETCH(QString, inTheWay);
    makeTree(*folder, inTheWay);
    const QString before = treeOf(*folder, { {} });
    QTest::failOnWarning(QRegularExpression(u"."_s));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"stay in memory.*settings.plist"_s));
    UserDefaults defaults(folder->path(u"conf/deep/settings.plist"_s));
    defaults.setValue(Key, 1);
    QVERIFY(!defaults.synchronize());
    QVERIFY(!defaults.synchronize()); // and says so once
    QCOMPARE(defaults.integer(Key), 1);
    QCOMPARE(treeOf(*folder, { {} }), before);
    // Kept for the next try. What that makes is the user's own.
    QVERIFY(!FileSystem::removeTree(folder->path(u"conf"_s)));
    QVERIFY(defaults.synchronize());
    QCOMPARE(UserDefaults(defaults.filePath()).integer(Key), 1);
    QCOMPARE(fileStatus(folder->path(u"conf"_s), Links::NoFollow)->mode, mode_t(0700));
    QCOMPARE(fileStatus(defaults.filePath(), Links::NoFollow)->mode, mode_t(0600));
    QCOMPARE(folder->names(u"conf/deep"_s), QStringList { u"settings.plist"_s });
}

void tst_UserDefaults::linkKeepsLeadingToTheFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("names");
    const QStringList names { u"s.plist"_s };
    QTest::newRow("whole") << plistStart + "<dict/></plist>" << names;
    QTest::newRow("damaged") << QByteArray("damaged")
                             << names + QStringList { u"s.plist.damaged"_s };
    QTest::newRow("dangling") << QByteArray() << names;
}

void tst_UserDefaults::linkKeepsLeadingToTheFile()
{
    QFETCH(QByteArray, content);
    makeTree(*folder, u"second->dotfiles/s.plist, settings.plist->~/second"_s);
    if (!content.isEmpty()) {
        folder->makeFolder(u"dotfiles"_s);
        folder->write(u"dotfiles/s.plist"_s, content);
    }
    if (content == "damaged")
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"s.plist.damaged"_s));
    UserDefaults defaults(file());
    defaults.setValue(Key, 1);
    QVERIFY(defaults.synchronize());
    QCOMPARE(linkTarget(file()), folder->path(u"second"_s));
    QTEST(folder->names(u"dotfiles"_s), "names");
    QCOMPARE(UserDefaults(folder->path(u"dotfiles/s.plist"_s)).integer(Key), 1);
}

QTEST_GUILESS_MAIN(tst_UserDefaults)
#include "tst_UserDefaults.moc"
