#include "platform/FileKinds.h"
#include "platform/Icons.h"

#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(FileKind)

class tst_FileKinds : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void kindIsToldByNameAndType_data();
    void kindIsToldByNameAndType();
    void specialNameDoesNotSpeakForItsSuffix();
    void packageNames_data();
    void packageNames();
    void everyKindHasAnIconOnABareSystem_data();
    void everyKindHasAnIconOnABareSystem();
    void drawnIconsAreSharpAtAnyScale();
};

void tst_FileKinds::kindIsToldByNameAndType_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<FileKind>("kind");
    QTest::addColumn<QString>("text");
    using enum FileKind;
    QTest::newRow("folder") << "src" << Directory << "Folder";
    QTest::newRow("folder named like a file") << "photo.png" << Directory << "Folder";
    QTest::newRow("application") << "Editor.app" << Directory << "Application";
    QTest::newRow("AppDir") << "Editor.AppDir" << Directory << "Application";
    QTest::newRow("other package") << "Tools.pkg" << Directory << "Package";
    QTest::newRow("hidden folder, no package") << ".app" << Directory << "Folder";
    QTest::newRow("picture") << "photo.png" << Regular << "PNG image";
    QTest::newRow("capitals") << "PHOTO.PNG" << Regular << "PNG image";
    QTest::newRow("first letter becomes a capital")
        << "notes.txt" << Regular << "Plain text document";
    QTest::newRow("no suffix") << "data" << Regular << "--";
    QTest::newRow("unknown suffix") << "data.qqqzzz" << Regular << "--";
    QTest::newRow("dot at the end") << "data." << Regular << "--";
    QTest::newRow("name that is no text")
        << QString(QChar(0xDCFF)) + ".png"_L1 << Regular << "PNG image";
    QTest::newRow("link") << "photo.png" << Symlink << "Symbolic link";
    QTest::newRow("FIFO") << "photo.png" << Fifo << "Pipe";
}

void tst_FileKinds::kindIsToldByNameAndType()
{
    QFETCH(QString, name);
    QFETCH(FileKind, kind);
    const FileKinds kinds;
    QTEST(kinds.kindText(name, kind), "text");
    QTEST(kinds.kindText(name, kind), "text"); // kept from the first time
}

void tst_FileKinds::specialNameDoesNotSpeakForItsSuffix()
{
    const FileKinds kinds;
    kinds.kindText(u"CMakeLists.txt"_s, FileKind::Regular);
    QCOMPARE(kinds.kindText(u"notes.txt"_s, FileKind::Regular), u"Plain text document"_s);

    QVERIFY(kinds.kindText(u"Makefile"_s, FileKind::Regular).startsWith(u"Makefile"));

    const QString packed = kinds.kindText(u"a.tar.gz"_s, FileKind::Regular);
    QVERIFY(packed != kinds.kindText(u"a.gz"_s, FileKind::Regular));
    QCOMPARE(kinds.kindText(u"b.1.tar.gz"_s, FileKind::Regular), packed);
}

void tst_FileKinds::packageNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("package");
    for (const char *suffix :
         { "app", "pkg", "mpkg", "bundle", "plugin", "framework", "rtfd", "AppDir" })
        QTest::newRow(suffix) << "A."_L1 + QLatin1StringView(suffix) << true;
    QTest::newRow("last suffix counts") << "A.app.old" << false;
    QTest::newRow("suffix alone") << "app" << false;
    QTest::newRow("hidden") << ".app" << false;
}

void tst_FileKinds::packageNames()
{
    QFETCH(QString, name);
    QTEST(FileKinds::isPackageName(name), "package");
}

void tst_FileKinds::everyKindHasAnIconOnABareSystem_data()
{
    QTest::addColumn<QIcon>("icon");
    using enum FileKind;
    QIcon::setThemeName(u"no-such-theme"_s);
    QIcon::setFallbackThemeName(u"no-such-theme"_s);
    const FileKinds kinds;
    QTest::newRow("folder") << kinds.icon(u"a"_s, Directory);
    QTest::newRow("package") << kinds.icon(u"a.pkg"_s, Directory);
    QTest::newRow("link") << kinds.icon(u"a"_s, Symlink);
    QTest::newRow("dangling link") << kinds.icon(u"a"_s, Symlink, true);
    QTest::newRow("socket") << kinds.icon(u"a"_s, Socket);
    for (const char *suffix :
         { "txt", "png", "mp3", "mkv", "zip", "tar.gz", "deb", "pdf", "sh", "qqqzzz" })
        QTest::newRow(suffix) << kinds.icon("a."_L1 + QLatin1StringView(suffix), Regular);
    for (const char *action : { "edit-copy", "go-jump", "folder-new", "edit-delete", "edit-rename",
                                "view-refresh", "go-up" })
        QTest::newRow(action) << themedIcon(QLatin1StringView(action));
}

void tst_FileKinds::everyKindHasAnIconOnABareSystem()
{
    QFETCH(QIcon, icon);
    const QImage image = icon.pixmap(16, 16).toImage().convertToFormat(QImage::Format_ARGB32);
    int painted = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            painted += qAlpha(image.pixel(x, y)) > 128;
    }
    QVERIFY2(painted > 15, qPrintable(QString::number(painted)));
}

void tst_FileKinds::drawnIconsAreSharpAtAnyScale()
{
    QIcon::setThemeName(u"no-such-theme"_s);
    const QPixmap pixmap = FileKinds().genericFolderIcon().pixmap(QSize(16, 16), 3);
    QCOMPARE(pixmap.size(), QSize(48, 48));
}

QTEST_MAIN(tst_FileKinds)
#include "tst_FileKinds.moc"
