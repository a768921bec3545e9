#include "window/UnifiedWindow.h"

#include "tests/support/World.h"
#include "window/BackgroundPieces.h"
#include "window/InfoBarTextField.h"
#include "window/WindowFrame.h"

#include <QSignalSpy>
#include <QSplitter>

class tst_UnifiedWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theFrameIsDrawnAsStoredAndOnlyAsksToClose()
    {
        defaults.setValue(Settings::UseFlatUnifiedLook, true);
        UnifiedWindow window(defaults);
        QVERIFY(!window.flat()); // Kept: the other way round
        window.setMinSize({ 100, 400 });
        QCOMPARE(window.minimumSize(), QSize(150, 400));
        window.show();
        const QSignalSpy asked(&window, &UnifiedWindow::closeAsked);
        window.close();
        QCOMPARE(asked.size(), 1);
        QVERIFY(window.isVisible());

        for (const QString &set : { QString(), u"flat_"_s }) {
            const QPixmap sharp = backgroundPiece(set + u"bottom_right"_s, Qt::gray, 1.5);
            QCOMPARE(sharp.height(), qRound(1.5 * BackgroundBottomHeight));
            // Where the pieces meet, nothing shows.
            const QImage top = backgroundPiece(set + u"top_left"_s, Qt::gray, 1).toImage();
            const QImage side = backgroundPiece(set + u"middle_left"_s, Qt::gray, 1).toImage();
            QVERIFY(qAbs(qGray(top.pixel(0, top.height() - 1)) - qGray(side.pixel(0, 0))) <= 1);
        }
    }

    void theFrameComesBackAsFarAsTheScreenHasRoom()
    {
        const QRect screen(0, 20, 640, 400);
        const std::pair<QRect, QRect> rows[] = {
            { { 10, 30, 600, 300 }, { 10, 30, 600, 300 } },
            { { -50, 0, 600, 300 }, { 0, 20, 600, 300 } },
            { { 300, 300, 600, 300 }, { 40, 120, 600, 300 } },
            { { 100, 100, 1120, 700 }, { 0, 20, 640, 400 } },
        };
        for (const auto &[frame, fitted] : rows)
            QCOMPARE(fittedTo(screen, frame), fitted);

        StartedWorld world;
        QCOMPARE(world.window.windowTitle(), u"left – Twinleaf"_s);
        world.focus(Side::Right);
        QTRY_COMPARE(world.window.windowTitle(), u"right – Twinleaf"_s);
        QSplitter &panes = *world.window.splitView;
        const auto set = [&](QSize size, int left, int column) {
            world.window.resize(size);
            QTRY_COMPARE(world.window.size(), size);
            panes.setSizes({ left, 700 - left });
            world.list().setColumnWidths({ 0, 0, column, column + 1, column + 2 });
        };
        const auto state = [&] {
            return std::tuple(world.window.size(), panes.sizes(), world.list().columnWidths());
        };
        set({ 760, 500 }, 300, 61);
        const auto left = state();
        world.bus.post(ApplicationWillTerminate);
        set({ 700, 450 }, 350, 71);
        QVERIFY(state() != left);
        restoreFrame(world.window, world.defaults);
        QTRY_COMPARE(state(), left);
    }

    void aFieldIsPaintedInItsColors()
    {
        InfoBarTextField field(Qt::ElideRight);
        field.readColors(defaults);
        QCOMPARE(field.frameColor().alpha(), 0);
        for (const bool dark : { false, true, false }) { // as the desktop turns
            field.setPalette(dark ? QPalette(Qt::black) : QPalette(Qt::white));
            QCOMPARE(field.textColor().lightness() > 127, dark);
        }
        defaults.setValue(Settings::InfoBarFontColor,
                          QVariantMap { { u"Blue"_s, 1.0 }, { u"Alpha"_s, 1 } });
        defaults.setValue(Settings::InfoBarFrameColor,
                          QVariantMap { { u"Red"_s, 1.0 }, { u"Alpha"_s, 1 } });
        field.readColors(defaults);
        QCOMPARE(field.textColor(), QColor(Qt::blue));
        field.resize(40, 20);
        QImage image(field.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        // Kept: the frame goes round the part alone that is painted anew.
        field.render(&image, QPoint(10, 5), QRect(10, 5, 20, 10), {});
        QCOMPARE(image.pixelColor(10, 5), QColor(Qt::red));
        QCOMPARE(image.pixelColor(0, 0), QColor(Qt::white));
    }

private:
    TestFolder folder;
    UserDefaults defaults { folder.path(u"settings.plist"_s) };
};

QTEST_MAIN(tst_UnifiedWindow)
#include "tst_UnifiedWindow.moc"
