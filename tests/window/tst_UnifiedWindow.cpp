#include "window/UnifiedWindow.h"

#include "tests/support/World.h"
#include "window/BackgroundPieces.h"
#include "window/InfoBarTextField.h"
#include "window/WindowFrame.h"

#include <QSignalSpy>
#include <QSplitter>

using namespace Qt::StringLiterals;

class tst_UnifiedWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theSettingSelectsThePiecesTheOtherWayRound()
    {
        for (const QVariant &stored : { QVariant(), QVariant(false), QVariant(true) }) {
            defaults.setValue(Settings::UseFlatUnifiedLook, stored);
            QCOMPARE(UnifiedWindow(defaults).flat(), !stored.toBool());
        }
    }

    void theLeastSizeIs150SquaredAndTheCloseBoxOnlyAsks()
    {
        UnifiedWindow window(defaults);
        window.setMinSize({ 100, 400 });
        QCOMPARE(window.minimumSize(), QSize(150, 400));
        window.show();
        const QSignalSpy asked(&window, &UnifiedWindow::closeAsked);
        window.close();
        QCOMPARE(asked.size(), 1);
        QVERIFY(window.isVisible());
    }

    void thePiecesAreSharpAtAnyScale()
    {
        for (const QString &set : { QString(), u"flat_"_s }) {
            for (const QString &part : { u"top_left"_s, u"top_middle"_s, u"bottom_right"_s }) {
                const int height = part[0] == u't' ? BackgroundTopHeight : BackgroundBottomHeight;
                QCOMPARE(backgroundPiece(set + part, Qt::gray, 1.5).height(), qRound(1.5 * height));
            }
        }
        QVERIFY(backgroundPiece(u"flat_something"_s, Qt::gray, 1).isNull());
        // Where the pieces meet, nothing shows.
        const QImage top = backgroundPiece(u"top_left"_s, Qt::gray, 1).toImage();
        const QImage side = backgroundPiece(u"middle_left"_s, Qt::gray, 1).toImage();
        QVERIFY(qAbs(qGray(top.pixel(0, top.height() - 1)) - qGray(side.pixel(0, 0))) <= 1);
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
        const auto state = [&] {
            return std::tuple(world.window.size(), world.window.splitView->sizes(),
                              world.list().columnWidths());
        };
        world.window.resize(760, 500);
        world.window.splitView->setSizes({ 300, 400 });
        world.list().setColumnWidths({ 0, 0, 61, 62, 63 });
        QTRY_COMPARE(world.window.size(), QSize(760, 500));
        const auto left = state();
        world.bus.post(ApplicationWillTerminate);
        world.window.resize(700, 450);
        world.window.splitView->setSizes({ 350, 350 });
        world.list().setColumnWidths({ 0, 0, 71, 72, 73 });
        QVERIFY(state() != left);
        restoreFrame(world.window, world.defaults);
        QTRY_COMPARE(state(), left);
    }

    void aFieldIsFramedWhereItIsPaintedAnew()
    {
        InfoBarTextField field(Qt::ElideRight);
        field.readColors(defaults);
        QCOMPARE(field.frameColor().alpha(), 0);
        defaults.setValue(Settings::InfoBarFrameColor,
                          QVariantMap { { u"Red"_s, 1.0 }, { u"Alpha"_s, 1 } });
        field.readColors(defaults);
        QCOMPARE(field.frameColor(), QColor(Qt::red));
        field.resize(40, 20);
        QImage image(field.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        // Kept: the frame goes round the part alone.
        field.render(&image, QPoint(10, 5), QRect(10, 5, 20, 10), {});
        QCOMPARE(image.pixelColor(10, 5), QColor(Qt::red));
        QCOMPARE(image.pixelColor(0, 0), QColor(Qt::white));
    }

    void theTextOfAFieldCanBeReadInLightAndDark()
    {
        InfoBarTextField field(Qt::ElideRight);
        field.readColors(defaults);
        for (const bool dark : { false, true, false }) { // as the desktop turns
            field.setPalette(dark ? QPalette(Qt::black) : QPalette(Qt::white));
            QCOMPARE(field.textColor().lightness() > 127, dark);
        }
        QCOMPARE(field.textColor(), QColor(Qt::black));
        defaults.setValue(Settings::InfoBarFontColor,
                          QVariantMap { { u"Blue"_s, 1.0 }, { u"Alpha"_s, 1 } });
        field.readColors(defaults);
        QCOMPARE(field.textColor(), QColor(Qt::blue));
    }

private:
    TestFolder folder;
    UserDefaults defaults { folder.path(u"settings.plist"_s) };
};

QTEST_MAIN(tst_UnifiedWindow)
#include "tst_UnifiedWindow.moc"
