#include "util/PathText.h"

#include "util/BundleInfo.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_PathText : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void partsOfAPath_data();
    void partsOfAPath();
    void extensions_data();
    void extensions();
    void typedPaths();
    void itemNames();
    void settingsFileLiesInAnAbsoluteFolder();
};

void tst_PathText::partsOfAPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("parent");
    QTest::addColumn<QString>("last");
    QTest::addColumn<QStringList>("components");
    QTest::newRow("root") << "/"
                          << "/"
                          << "/" << QStringList { u"/"_s };
    QTest::newRow("roots") << "///"
                           << "/"
                           << "/" << QStringList { u"/"_s };
    QTest::newRow("below root") << "/a"
                                << "/"
                                << "a" << QStringList { u"/"_s, u"a"_s };
    QTest::newRow("slashes at the end") << "/a/b//"
                                        << "/a"
                                        << "b" << QStringList { u"/"_s, u"a"_s, u"b"_s };
    QTest::newRow("doubled slashes") << "//a//b"
                                     << "//a"
                                     << "b" << QStringList { u"/"_s, u"a"_s, u"b"_s };
    QTest::newRow("nothing") << ""
                             << ""
                             << "" << QStringList();
}

void tst_PathText::partsOfAPath()
{
    QFETCH(QString, path);
    QTEST(PathText::parent(path), "parent");
    QTEST(PathText::lastComponent(path), "last");
    QTEST(PathText::components(path), "components");
}

void tst_PathText::extensions_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QString>("rest");
    QTest::newRow("last of two") << "/x/a.tar.gz"
                                 << "gz"
                                 << "/x/a.tar";
    QTest::newRow("only the folder has one") << "/x.d/a"
                                             << ""
                                             << "/x.d/a";
    QTest::newRow("hidden file") << "/x/.profile"
                                 << ""
                                 << "/x/.profile";
    QTest::newRow("dot at the end") << "/x/a."
                                    << ""
                                    << "/x/a.";
    QTest::newRow("slash at the end") << "/x/a.app/"
                                      << "app"
                                      << "/x/a";
    QTest::newRow("root") << "/"
                          << ""
                          << "/";
}

void tst_PathText::extensions()
{
    QFETCH(QString, path);
    QTEST(PathText::extension(path), "extension");
    QTEST(PathText::withoutExtension(path), "rest");
}

void tst_PathText::typedPaths()
{
    qputenv("HOME", "/home/x");
    const std::pair<QString, QString> rows[] = {
        { u"/a//b/"_s, u"/a/b"_s },
        { u"/a/./b/../c"_s, u"/a/c"_s },
        { u"/../.."_s, u"/"_s },
        { u"~"_s, u"/home/x"_s },
        { u"~/a b/"_s, u"/home/x/a b"_s },
        { u"~other/a"_s, {} },
        { u"a/b"_s, {} },
        { u""_s, {} },
    };
    for (const auto &[typed, path] : rows)
        QCOMPARE(PathText::fromTyped(typed), path);
}

void tst_PathText::itemNames()
{
    for (const QString &name : { u"a"_s, u"..a"_s, u" "_s })
        QVERIFY2(PathText::isItemName(name), qUtf8Printable(name));
    for (const QString &name : { u""_s, u"."_s, u".."_s, u"a/b"_s, u"a\0b"_s })
        QVERIFY2(!PathText::isItemName(name), qUtf8Printable(name));
}

void tst_PathText::settingsFileLiesInAnAbsoluteFolder()
{
    const QString name = BundleInfo::bundleIdentifier() + u".plist"_s;
    qputenv("HOME", "/home/x//");
    qputenv("XDG_CONFIG_HOME", "relative");
    QCOMPARE(BundleInfo::getBundleIdentifier(), u"/home/x/.config/"_s + name);
    qputenv("XDG_CONFIG_HOME", "/conf");
    QCOMPARE(BundleInfo::getBundleIdentifier(), u"/conf/"_s + name);
}

QTEST_APPLESS_MAIN(tst_PathText)
#include "tst_PathText.moc"
