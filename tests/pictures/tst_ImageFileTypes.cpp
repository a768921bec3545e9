#include "pictures/ImageFileTypes.h"

#include "tests/support/TestFolder.h"

class tst_ImageFileTypes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void codeComesBeforeEnding_data()
    {
        QTest::addColumn<QByteArray>("code");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("isImage");
        const QByteArray none;
        for (const char *name : { "a.jpg", "a.JPEG", "a.Png", "a.tiff", "a.webp", "a.gif", "a.svg",
                                  "a.heic", "a.avif", "a.b.bmp" })
            QTest::newRow(name) << none << QString::fromLatin1(name) << true;
        for (const char *name : { "a.txt", "jpg", ".jpg", "a.jpg.zip", "a.", "a.pdf", "a.'JPEG'" })
            QTest::newRow(name) << none << QString::fromLatin1(name) << false;
        QTest::newRow("code of an image") << QByteArray("JPEG") << u"a.txt"_s << true;
        QTest::newRow("code in small letters") << QByteArray("PNGf") << u"a"_s << true;
        QTest::newRow("code of a text") << QByteArray("TEXT") << u"a.jpg"_s << false;
        QTest::newRow("code of nothing known") << QByteArray("abcd") << u"a.jpg"_s << false;
        // Whoever says OK in the information sheet gives such a code to the file.
        QTest::newRow("code that stands for an application")
            << QByteArray("QX3B") << u"a.jpg"_s << true;
        QTest::newRow("and for no image") << QByteArray("QX3B") << u"a.txt"_s << false;
    }
    void codeComesBeforeEnding()
    {
        QFETCH(const QByteArray, code);
        QFETCH(const QString, name);
        const ImageFileTypes types;
        QTEST(types.isImage(code, name), "isImage");
    }

    void codesAreReadOfTheFile()
    {
        const TestFolder folder;
        const ImageFileTypes types;
        for (const char *name : { "own", "foreign", "flags.png" })
            folder.write(QString::fromLatin1(name));
        folder.setAttribute(u"own"_s, "user.twinleaf.type", "GIFf");
        folder.setAttribute(u"foreign"_s, "user.com.apple.FinderInfo",
                            "TIFF" + QByteArray(28, '\0'));
        folder.setFinderFlags(u"flags.png"_s, 0x0002); // and no code
        for (const char *name : { "own", "foreign", "flags.png" })
            QVERIFY2(types.isFileImage(folder.path(QString::fromLatin1(name))), name);
    }
};

QTEST_GUILESS_MAIN(tst_ImageFileTypes)
#include "tst_ImageFileTypes.moc"
