#include "base/MainThread.h"
#include "files/FileSystem.h"
#include "files/Journal.h"
#include "settings/BookmarkStore.h"
#include "settings/BundleInfo.h"
#include "settings/PropertyList.h"
#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"
#include "tests/support/TestTree.h"
#include "tests/support/Watched.h"

#include <QRegularExpression>
#include <QTimeZone>

#include <atomic>
#include <latch>
#include <limits>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr auto Key = "TWKey"_L1;
constexpr auto Other = "TWOther"_L1;

const QByteArray plistStart = "<?xml version=\"1.0\"?><plist version=\"1.0\">";

} // namespace

class tst_UserDefaults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { folder = std::make_unique<TestFolder>(); }

    void valuesSurviveTheFile()
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

    void fileIsWrittenOnceForManyChanges()
    {
        UserDefaults defaults(file());
        for (int i = 0; i < 100; ++i)
            defaults.setValue(Key, i);
        QVERIFY(folder->names().isEmpty());
        QTRY_COMPARE(folder->names(), QStringList { u"settings.plist"_s });
        QCOMPARE(readBack(Key), QVariant(99LL));
    }

    void aSlowDiskHoldsUpNobody()
    {
        std::atomic<bool> reached { false };
        std::atomic<bool> askedByWindow { false };
        std::latch answer(1);
        const Watched disk([&](Call, const char *name, unsigned) {
            if (!QByteArrayView(name).endsWith(".lock"))
                return 0;
            reached = true;
            if (isMainThread())
                askedByWindow = true;
            else
                answer.wait();
            return 0;
        });
        UserDefaults defaults(file());
        defaults.setValue(Key, 1);
        QTRY_VERIFY(reached);
        defaults.setValue(Other, 2);
        answer.count_down();
        QTRY_COMPARE(readBack(Key), QVariant(1LL));
        QTRY_COMPARE(defaults.integer(Key), 1);
        QCOMPARE(defaults.integer(Other), 2);
        QTRY_COMPARE(readBack(Other), QVariant(2LL));
        QVERIFY(!askedByWindow);
    }

    void otherTypesAnswerNothing()
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
            QCOMPARE(defaults.dictionary(Key).has_value(),
                     value.typeId() == QMetaType::QVariantMap);
        }
    }

    void storedValuesHideGlobalOnes()
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

    void ownChangesAreMergedOverThoseOfOthers()
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

    void damagedFileIsSetAside()
    {
        const QByteArray contents[] = {
            "",
            "TWKey = 1\n",
            plistStart + "<dict><key>TWKey</key><true/>",
            plistStart + "<array><true/></array></plist>",
            plistStart + "<string>dict</string></plist>",
            QByteArray(4096, '\0'),
            "bplist00\xD1\x01\x02",
            // So deep that a reader that calls itself for each would run out of stack.
            plistStart + "<dict><key>TWKey</key>" + QByteArray("<array>").repeated(200'000)
                + QByteArray("</array>").repeated(200'000) + "</dict></plist>",
            plistStart + "<dict><key>TWKey</key><integer>many</integer></dict></plist>",
            plistStart + "<dict><key>TWKey</key><true/></dict><dict/></plist>",
        };
        for (const QByteArray &content : contents) {
            init();
            folder->write(u"settings.plist"_s, content);
            folder->write(u"settings.plist.damaged"_s, "older");
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"settings.plist.damaged2"_s));
            UserDefaults defaults(file());
            QVERIFY(defaults.notice().contains(u"'settings.plist.damaged2'"_s));
            QVERIFY(!defaults.contains(Key));
            defaults.setValue(Other, 1);
            QVERIFY(defaults.synchronize());
            QCOMPARE(folder->read(u"settings.plist.damaged"_s), "older");
            QCOMPARE(folder->read(u"settings.plist.damaged2"_s), content);
            QCOMPARE(readBack(Other), QVariant(1LL));
        }
    }

    void partOfAFileIsNeverTakenForTheWhole()
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

    void noFifoAmongTheNotesIsWaitedFor()
    {
        const Journal journal(folder->path(u"notes"_s));
        journal.write({ u"field"_s });
        QCOMPARE(mkfifo(folder->bytes(u"notes/fifo"_s), 0600), 0);
        QCOMPARE(journal.abandoned().size(), 1);
        QCOMPARE(journal.abandoned().first()->fields(), QStringList { u"field"_s });
    }

    void whatCannotBeWrittenStaysInMemory()
    {
        QTest::failOnWarning(QRegularExpression(u"."_s));
        // What nobody can read as a file, a file in place of the folder, what would be waited for.
        const QString name = u"conf/deep/settings.plist"_s;
        for (const QString &inTheWay :
             { u"mkdir -p "_s + name, u"touch conf"_s, u"mkdir -p conf/deep; mkfifo "_s + name,
               u"mkdir -p conf/deep; mkfifo %1.lock"_s.arg(name) }) {
            init();
            folder->shell(inTheWay);
            const QStringList before = folder->names(u"conf/deep"_s);
            QTest::ignoreMessage(QtWarningMsg,
                                 QRegularExpression(u"stay in memory.*settings.plist"_s));
            UserDefaults defaults(folder->path(name));
            defaults.setValue(Key, 1);
            QVERIFY(!defaults.synchronize());
            QVERIFY(!defaults.synchronize()); // and says so once
            QCOMPARE(defaults.integer(Key), 1);
            QCOMPARE(folder->names(u"conf/deep"_s), before);
            // Kept for the next try. What that makes is the user's own.
            folder->shell(u"rm -r conf"_s);
            QVERIFY(defaults.synchronize());
            QCOMPARE(UserDefaults(defaults.filePath()).integer(Key), 1);
            QCOMPARE(fileStatus(folder->path(u"conf"_s), Links::NoFollow)->mode, mode_t(0700));
            QCOMPARE(fileStatus(defaults.filePath(), Links::NoFollow)->mode, mode_t(0600));
            QCOMPARE(folder->names(u"conf/deep"_s), QStringList { u"settings.plist"_s });
        }
    }

    void linkKeepsLeadingToTheFile()
    {
        const std::pair<QByteArray, QString> cases[] = {
            { plistStart + "<dict/></plist>", u"s.plist"_s },
            { "damaged", u"s.plist s.plist.damaged"_s },
            { {}, u"s.plist"_s }, // leads nowhere yet
        };
        for (const auto &[content, names] : cases) {
            init();
            makeTree(*folder, u"second->dotfiles/s.plist, settings.plist->~/second"_s);
            if (!content.isEmpty())
                makeTree(*folder, u"dotfiles/s.plist="_s + QString::fromLatin1(content));
            if (content == "damaged")
                QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"s.plist.damaged"_s));
            UserDefaults defaults(file());
            defaults.setValue(Key, 1);
            QVERIFY(defaults.synchronize());
            QCOMPARE(linkTarget(file()), folder->path(u"second"_s));
            QCOMPARE(folder->names(u"dotfiles"_s).join(u' '), names);
            QCOMPARE(UserDefaults(folder->path(u"dotfiles/s.plist"_s)).integer(Key), 1);
        }
    }

    void oneBookmarkPerShownPathAndOneFavoritePerPath()
    {
        UserDefaults defaults(file());
        BookmarkStore store(defaults);
        // Damaged records are passed over.
        defaults.setValue(
            Settings::Bookmarks,
            QVariantList { u"text"_s, 7, QVariantMap { { u"RealPath"_s, u"/a"_s } } });
        QCOMPARE(pathsIn(defaults), QString());
        store.addBookmarkEntry(u"File System/a"_s, u"/a"_s);
        store.addBookmarkEntry(u"File System/b"_s, u"/b"_s);
        store.addBookmarkEntry(u"File System/a"_s, u"/elsewhere/a"_s);
        QCOMPARE(pathsIn(defaults), u"/a /b"_s);
        store.deleteBookmarkEntry({ u"File System/a"_s, u"/other"_s });
        for (const QString &name : { u"/y.desktop"_s, u"/y.desktop"_s, u"/x.desktop"_s })
            store.addFavoriteApplicationsEntry(name, u"a name"_s);
        QCOMPARE(pathsIn(defaults), u"/b /y.desktop /x.desktop"_s);
        QCOMPARE(store.getFavoriteApplicationsFromUserDefaults().at(0).name, u"y.desktop"_s);
        store.deleteFavoriteApplicationsEntry(u"/y.desktop"_s);
        QCOMPARE(pathsIn(defaults), u"/b /x.desktop"_s);
    }

    void recordsOfTwoProgramsAreAllKept()
    {
        UserDefaults first(file());
        UserDefaults second(file());
        BookmarkStore ours(first);
        BookmarkStore theirs(second);
        const auto stored = [&](UserDefaults &written) {
            if (!written.synchronize())
                return u"not written"_s;
            UserDefaults read(file());
            return pathsIn(read);
        };
        ours.addBookmarkEntry(u"a"_s, u"/a"_s);
        ours.addBookmarkEntry(u"b"_s, u"/b"_s);
        QCOMPARE(stored(first), u"/a /b"_s);
        theirs.addBookmarkEntry(u"c"_s, u"/c"_s);
        theirs.addBookmarkEntry(u"b"_s, u"/b"_s); // known by now
        theirs.addFavoriteApplicationsEntry(u"/x.desktop"_s, u"x"_s);
        QCOMPARE(stored(second), u"/a /b /c /x.desktop"_s);
        ours.deleteBookmarkEntry({ u"a"_s, {} });
        ours.addFavoriteApplicationsEntry(u"/y.desktop"_s, u"y"_s);
        QCOMPARE(stored(first), u"/b /c /x.desktop /y.desktop"_s);
        theirs.deleteFavoriteApplicationsEntry(u"/x.desktop"_s);
        QCOMPARE(stored(second), u"/b /c /y.desktop"_s);
    }

    void fileLiesInAnAbsoluteFolder()
    {
        const QString name = BundleInfo::bundleIdentifier() + u".plist"_s;
        qputenv("HOME", "/home/x//");
        qputenv("XDG_CONFIG_HOME", "relative");
        QCOMPARE(BundleInfo::getBundleIdentifier(), u"/home/x/.config/"_s + name);
        qputenv("XDG_CONFIG_HOME", "/conf");
        QCOMPARE(BundleInfo::getBundleIdentifier(), u"/conf/"_s + name);
    }

private:
    // Of the bookmarks and then of the favourites.
    static QString pathsIn(UserDefaults &defaults)
    {
        const BookmarkStore store(defaults);
        QStringList paths;
        for (const auto &each : store.getBookmarksFromUserDefaults())
            paths.append(each.realPath);
        for (const auto &each : store.getFavoriteApplicationsFromUserDefaults())
            paths.append(each.realPath);
        return paths.join(u' ');
    }
    QString file() const { return folder->path(u"settings.plist"_s); }
    QVariant readBack(QLatin1StringView key) const { return UserDefaults(file()).value(key); }

    std::unique_ptr<TestFolder> folder;
};

QTEST_GUILESS_MAIN(tst_UserDefaults)
#include "tst_UserDefaults.moc"
