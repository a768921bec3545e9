#include "files/PathText.h"

#include "settings/BundleInfo.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_PathText : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void partsOfAPath();
    void extensions();
    void typedPaths();
    void itemNames();
    void settingsFileLiesInAnAbsoluteFolder();
};

void tst_PathText::partsOfAPath()
{
    const QList<std::tuple<QString, QString, QString, QStringList>> cases {
        { u"/"_s, u"/"_s, u"/"_s, { u"/"_s } },
        { u"///"_s, u"/"_s, u"/"_s, { u"/"_s } },
        { u"/a"_s, u"/"_s, u"a"_s, { u"/"_s, u"a"_s } },
        { u"/a/b//"_s, u"/a"_s, u"b"_s, { u"/"_s, u"a"_s, u"b"_s } },
        { u"//a//b"_s, u"//a"_s, u"b"_s, { u"/"_s, u"a"_s, u"b"_s } },
        { {}, {}, {}, {} },
    };
    for (const auto &[path, parent, last, components] : cases) {
        QCOMPARE(PathText::parent(path), parent);
        QCOMPARE(PathText::lastComponent(path), last);
        QCOMPARE(PathText::components(path), components);
    }
}

void tst_PathText::extensions()
{
    const QList<std::tuple<QString, QString, QString>> cases {
        { u"/x/a.tar.gz"_s, u"gz"_s, u"/x/a.tar"_s }, { u"/x.d/a"_s, {}, u"/x.d/a"_s },
        { u"/x/.profile"_s, {}, u"/x/.profile"_s },   { u"/x/a."_s, {}, u"/x/a."_s },
        { u"/x/a.app/"_s, u"app"_s, u"/x/a"_s },      { u"/"_s, {}, u"/"_s },
    };
    for (const auto &[path, extension, rest] : cases) {
        QCOMPARE(PathText::extension(path), extension);
        QCOMPARE(PathText::withoutExtension(path), rest);
    }
}

void tst_PathText::typedPaths()
{
    qputenv("HOME", "/home/x");
    const QList<std::pair<QString, QString>> cases {
        { u"/a//b/"_s, u"/a/b"_s },
        { u"/a/./b/../c"_s, u"/a/c"_s },
        { u"/../.."_s, u"/"_s },
        { u"~"_s, u"/home/x"_s },
        { u"~/a b/"_s, u"/home/x/a b"_s },
        { u"~other/a"_s, {} },
        { u"a/b"_s, {} },
        { u""_s, {} },
    };
    for (const auto &[typed, path] : cases)
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
