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
    void itemNames_data();
    void itemNames();
    void settingsFileLiesInAnAbsoluteFolder_data();
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
    QTest::newRow("deeper") << "/a/b"
                            << "/a"
                            << "b" << QStringList { u"/"_s, u"a"_s, u"b"_s };
    QTest::newRow("slashes at the end") << "/a/b//"
                                        << "/a"
                                        << "b" << QStringList { u"/"_s, u"a"_s, u"b"_s };
    QTest::newRow("doubled slashes") << "//a//b"
                                     << "//a"
                                     << "b" << QStringList { u"/"_s, u"a"_s, u"b"_s };
    QTest::newRow("bare name") << "a"
                               << ""
                               << "a" << QStringList { u"a"_s };
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
    QTest::newRow("one") << "/x/a.zip"
                         << "zip"
                         << "/x/a";
    QTest::newRow("last of two") << "/x/a.tar.gz"
                                 << "gz"
                                 << "/x/a.tar";
    QTest::newRow("none") << "/x/a"
                          << ""
                          << "/x/a";
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

void tst_PathText::itemNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("good");
    QTest::newRow("plain") << "a" << true;
    QTest::newRow("hidden") << "..a" << true;
    QTest::newRow("blank") << " " << true;
    QTest::newRow("none") << "" << false;
    QTest::newRow("the folder itself") << "." << false;
    QTest::newRow("its parent") << ".." << false;
    QTest::newRow("path") << "a/b" << false;
    QTest::newRow("NUL") << u"a\0b"_s << false;
}

void tst_PathText::itemNames()
{
    QFETCH(QString, name);
    QTEST(PathText::isItemName(name), "good");
}

void tst_PathText::settingsFileLiesInAnAbsoluteFolder_data()
{
    QTest::addColumn<QByteArray>("configured");
    QTest::addColumn<QString>("file");
    const QString usual = u"/home/x/.config/org.twinleaf.Twinleaf.plist"_s;
    QTest::newRow("none") << QByteArray() << usual;
    QTest::newRow("relative") << QByteArray("conf") << usual;
    QTest::newRow("absolute") << QByteArray("/conf") << u"/conf/org.twinleaf.Twinleaf.plist"_s;
}

void tst_PathText::settingsFileLiesInAnAbsoluteFolder()
{
    QFETCH(QByteArray, configured);
    qputenv("HOME", "/home/x//");
    qputenv("XDG_CONFIG_HOME", configured);
    QTEST(BundleInfo::getBundleIdentifier(), "file");
}

QTEST_APPLESS_MAIN(tst_PathText)
#include "tst_PathText.moc"
