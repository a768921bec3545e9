#include "platform/desktop/Appearance.h"
#include "platform/desktop/SchemePalettes.h"
#include "tests/support/World.h"
#include "widgets/Colors.h"
#include "widgets/Icons.h"
#include "widgets/SegmentedControl.h"
#include "window/FilterBar.h"
#include "window/InfoBarTextField.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPainter>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QStyle>
#include <QTest>

namespace {

// How far the ink stands apart from its ground: from the commonest colour the one that is furthest.
double inkOn(const QImage &image)
{
    QHash<QRgb, int> count;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ++count[image.pixel(x, y)];
    const auto commonest =
        std::max_element(count.cbegin(), count.cend()); // of the values of a hash
    double most = 1;
    for (auto color = count.cbegin(); color != count.cend(); ++color)
        most = std::max(most, contrast(color.key(), commonest.key()));
    return most;
}

QImage seen(QWidget &widget, const QRect &area)
{
    return widget.grab(area).toImage();
}

} // namespace

// Of the real window and its controls, in both tones.
class tst_HighContrast : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QApplication::setPalette(QApplication::style()->standardPalette()); }

    void textsOfTheWindowAreEasilyRead_data() { tones(); }
    void textsOfTheWindowAreEasilyRead()
    {
        QFETCH(const bool, isDark);
        QStringList names { u"plain"_s, u"moved"_s };
        World world(u"left/plain=a, left/moved=a"_s);
        for (int label = 1; label <= 7; ++label) {
            names.append(u"label %1"_s.arg(label));
            world.folder.write(u"left/"_s + names.last(), "a");
            world.folder.setAttribute(u"left/"_s + names.last(), "user.twinleaf.label",
                                      QByteArray::number(label));
        }
        world.defaults.setValue(Settings::InfoBarFontColor,
                                dictionaryOfColor(isDark ? Qt::darkBlue : Qt::yellow));
        world.start();
        world.window.resize(900, 700);
        world.select(u"moved"_s);
        world.run(Command::Cut);
        showAppearance({ isDark, true });
        QVERIFY(isHighContrast());
        const auto rowsAreRead = [&](const char *state) {
            for (const QString &name : names) {
                const QModelIndex cell =
                    world.list().tableModel().index(world.row(name), int(Column::Name));
                const double ink =
                    inkOn(seen(*world.list().viewport(), world.list().visualRect(cell)));
                QVERIFY2(ink >= EasyContrast,
                         qPrintable(name + u' ' + QLatin1StringView(state) + QString::number(ink)));
            }
        };
        world.list().clearSelection();
        rowsAreRead("");
        world.list().selectAll();
        rowsAreRead("selected");
        world.focus(Side::Right);
        rowsAreRead("selected in the other pane");

        world.list().selectRow(0);
        world.focus(Side::Left);
        const std::pair<const char *, QWidget *> parts[] = {
            { "navigator", world.window.segmentedControls.left },
            { "info bar", world.window.infoBars.left.fileDate },
            { "button that is off", world.window.buttons[Command::Copy] },
            { "button", world.window.buttons[Command::NewFolder] },
            { "filter", world.window.filterBars.left->field },
        };
        world.window.filterBars.left->show();
        QVERIFY(!world.window.buttons[Command::Copy]->isEnabled());
        for (const auto &[name, part] : parts) {
            const QImage image = seen(*part, part->rect().adjusted(4, 4, -4, -4));
            QVERIFY2(inkOn(image) >= EasyContrast, name);
        }
        // The frames of the pane with the keyboard and of the other one.
        for (const Side side : { Side::Left, Side::Right })
            QVERIFY(inkOn(seen(world.list(side), { 0, 0, 3, 60 })) >= SeenContrast);
        showAppearance({ isDark, false });
        QVERIFY(!isHighContrast());
    }

    void edgesOfControlsAreSeen_data() { tones(); }
    void edgesOfControlsAreSeen()
    {
        QFETCH(const bool, isDark);
        showAppearance({ isDark, true });
        QWidget window;
        window.resize(300, 300);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        auto *box = new QComboBox(&window);
        box->addItem(u"text"_s);
        QWidget *const controls[] = { new QPushButton(u"text"_s, &window),
                                      new QLineEdit(u"text"_s, &window),
                                      box,
                                      new QSpinBox(&window),
                                      new QCheckBox(&window),
                                      new QRadioButton(&window),
                                      new QPlainTextEdit(&window),
                                      new QTableView(&window) };
        for (QWidget *control : controls) {
            const char *name = control->metaObject()->className();
            control->setGeometry(10, 10, 120, 24);
            control->show();
            control->raise();
            for (const bool enabled : { true, false }) {
                control->setEnabled(enabled);
                // From the window across the left edge, clear of what stands inside.
                QVERIFY2(inkOn(seen(window, { 4, 21, 10, 2 })) >= SeenContrast, name);
            }
            control->hide();
        }
        for (const QIcon::Mode mode : { QIcon::Normal, QIcon::Disabled }) {
            QImage ground(32, 32, QImage::Format_RGB32);
            ground.fill(QApplication::palette().color(QPalette::Window));
            QPainter painter(&ground);
            themedIcon(u"edit-copy"_s).paint(&painter, ground.rect(), Qt::AlignCenter, mode);
            painter.end();
            QVERIFY(inkOn(ground) >= SeenContrast);
        }
    }

private:
    static void tones()
    {
        QTest::addColumn<bool>("isDark");
        QTest::newRow("black on white") << false;
        QTest::newRow("white on black") << true;
    }
};

QTEST_MAIN(tst_HighContrast)
#include "tst_HighContrast.moc"
