#include "widgets/FileKinds.h"
#include "widgets/Icons.h"

#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_FileKinds : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void kindIsToldByNameAndType()
    {
        using enum FileKind;
        const std::tuple<QString, FileKind, QString> cases[] = {
            { u"src"_s, Directory, u"Folder"_s },
            { u"photo.png"_s, Directory, u"Folder"_s },
            { u"Editor.app"_s, Directory, u"Application"_s },
            { u"Editor.AppDir"_s, Directory, u"Application"_s },
            { u"Tools.pkg"_s, Directory, u"Package"_s },
            { u".app"_s, Directory, u"Folder"_s }, // hidden, no package
            { u"photo.png"_s, Regular, u"PNG image"_s },
            { u"PHOTO.PNG"_s, Regular, u"PNG image"_s },
            { u"notes.txt"_s, Regular, u"Plain text document"_s }, // a capital at the start
            { u"data"_s, Regular, u"--"_s },
            { u"data.qqqzzz"_s, Regular, u"--"_s },
            { u"data."_s, Regular, u"--"_s },
            { QChar(0xDCFF) + u".png"_s, Regular, u"PNG image"_s }, // a name that is no text
            { u"photo.png"_s, Symlink, u"Symbolic link"_s },
            { u"photo.png"_s, Fifo, u"Pipe"_s },
        };
        const FileKinds kinds;
        for (int time = 0; time < 2; ++time) { // the second time from memory
            for (const auto &[name, kind, text] : cases)
                QCOMPARE(name + u": "_s + kinds.kindText(name, kind), name + u": "_s + text);
        }
    }

    void specialNameDoesNotSpeakForItsSuffix()
    {
        const FileKinds kinds;
        kinds.kindText(u"CMakeLists.txt"_s, FileKind::Regular);
        QCOMPARE(kinds.kindText(u"notes.txt"_s, FileKind::Regular), u"Plain text document"_s);

        QVERIFY(kinds.kindText(u"Makefile"_s, FileKind::Regular).startsWith(u"Makefile"));

        const QString packed = kinds.kindText(u"a.tar.gz"_s, FileKind::Regular);
        QVERIFY(packed != kinds.kindText(u"a.gz"_s, FileKind::Regular));
        QCOMPARE(kinds.kindText(u"b.1.tar.gz"_s, FileKind::Regular), packed);
    }

    void everyKindHasASharpIconOnABareSystem()
    {
        using enum FileKind;
        QIcon::setThemeName(u"no-such-theme"_s);
        QIcon::setFallbackThemeName(u"no-such-theme"_s);
        const FileKinds kinds;
        QList icons { kinds.icon(u"a"_s, Directory), kinds.icon(u"a.pkg"_s, Directory),
                      kinds.icon(u"a"_s, Symlink),   kinds.icon(u"a"_s, Symlink, true),
                      kinds.icon(u"a"_s, Socket),    kinds.genericFolderIcon() };
        for (const QString &suffix :
             u"txt html png mp3 mkv zip ttf pdf ods odp sh qqqzzz"_s.split(u' '))
            icons += kinds.icon(u"a."_s + suffix, Regular);
        for (const QString &action :
             u"edit-copy edit-move folder-new edit-delete edit-rename view-refresh document-open "
             "user-home drive-harddisk dialog-error dialog-information"_s.split(u' '))
            icons += themedIcon(action);
        for (qsizetype i = 0; i < icons.size(); ++i) {
            const QImage image = icons[i].pixmap(QSize(16, 16), 3).toImage();
            QCOMPARE(image.size(), QSize(48, 48));
            int painted = 0;
            for (int pixel = 0; pixel < 48 * 48; ++pixel)
                painted += image.pixelColor(pixel % 48, pixel / 48).alpha() > 128;
            QVERIFY2(painted > 9 * 15, qPrintable(QString::number(i)));
        }
        // Strokes are as light or dark as texts, also after the desktop turned.
        for (const Qt::GlobalColor ground : { Qt::white, Qt::black, Qt::white }) {
            QGuiApplication::setPalette(QPalette(ground));
            const QImage image = themedIcon(u"edit-copy"_s).pixmap(48, 48).toImage();
            const QColor ink = QGuiApplication::palette().color(QPalette::WindowText);
            QCOMPARE(image.pixelColor(29, 16), ink); // the middle of a stroke
        }
    }
};

QTEST_MAIN(tst_FileKinds)
#include "tst_FileKinds.moc"
