#include "model/Messages.h"
#include "sheets/ExpandSelectionSheet.h"
#include "sheets/WorkingSheet.h"
#include "widgets/ActivitySpinner.h"
#include "widgets/InputSheet.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

// The sheet of a run, which is asked to stop by the message.
struct World {
    explicit World(QWidget *window = nullptr)
        : sheet(bus, window)
    {
        bus.subscribe(CancelThread, this, &World::cancel);
    }
    void cancel(const NoPayload &) { ++cancels; }

    MessageBus bus;
    int cancels = 0;
    WorkingSheet sheet;
};

// Of one kind, that the sheet gets.
struct EventCount : QObject {
    EventCount(QEvent::Type counted, QWidget &sheet)
        : type(counted)
    {
        sheet.installEventFilter(this);
    }
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == type;
        return false;
    }
    const QEvent::Type type;
    int count = 0;
};

bool shows(const QWidget &sheet, const QString &text)
{
    const auto labels = sheet.findChildren<QLabel *>();
    return std::any_of(labels.begin(), labels.end(),
                       [&](const QLabel *label) { return label->text() == text; });
}

} // namespace

class tst_Sheets : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void typingReplacesTheNameWithoutItsExtension()
    {
        const QString odd = u"."_s + QChar(0xDCFF); // a byte that is not UTF-8
        const struct {
            QString given;
            Qt::Key key;
            QString kept;
        } rows[] = {
            { u"a.tar.gz"_s, Qt::Key_Return, u".gz"_s },
            { u"Makefile"_s, Qt::Key_Return },
            { u".profile"_s, Qt::Key_Return },
            { u"/home/x/a.b"_s, Qt::Key_Return },
            { u"old"_s, Qt::Key_Enter },
            { u"old"_s, Qt::Key_Escape },
            { u"old.a\nb"_s, Qt::Key_Return, u".a\nb"_s },
            { u"old"_s + odd, Qt::Key_Return, odd },
        };
        for (const auto &row : rows) {
            InputSheet sheet(u"Name:"_s, row.given, nullptr);
            auto *field = sheet.findChild<QLineEdit *>();
            QCOMPARE(field->selectedText() + row.kept, row.given);
            QTimer::singleShot(0, &sheet, [&] {
                QTest::keyClicks(field, u"typed"_s);
                QTest::keyClick(field, row.key);
            });
            QCOMPARE(sheet.getString(),
                     row.key == Qt::Key_Escape ? QString() : u"typed"_s + row.kept);
            const auto buttons = sheet.findChildren<QPushButton *>();
            QCOMPARE(buttons.size(), 2);
            QCOMPARE(buttons[0]->text(), u"&OK"_s);
            QVERIFY(buttons[0]->isDefault());
            QCOMPARE(buttons[1]->text(), u"&Cancel"_s);
            QTimer::singleShot(0, buttons[1], &QPushButton::click);
            QCOMPARE(sheet.getString(), QString());
        }
    }

    void aPatternIsChosenByKeys()
    {
        ExpandSelectionSheet sheet(u"Group selection"_s, {}, nullptr);
        QTimer::singleShot(0, &sheet, [&] {
            QVERIFY(shows(sheet, u"Group selection"_s));
            const auto typeInto = [&](Qt::Key key) { QTest::keyClick(sheet.focusWidget(), key); };
            QTest::keyClicks(sheet.focusWidget(), u"a*"_s); // the text comes first
            typeInto(Qt::Key_Backtab);
            typeInto(Qt::Key_End); // ends at the last method
            typeInto(Qt::Key_Backtab);
            typeInto(Qt::Key_Down);
            typeInto(Qt::Key_Down);
            for (int widgets = 0; widgets < 3; ++widgets)
                typeInto(Qt::Key_Tab);
            typeInto(Qt::Key_Space);
            typeInto(Qt::Key_Return);
        });
        const ExpandSelection request = sheet.getInput();
        QCOMPARE(request.target, MatchTarget::Date);
        QCOMPARE(request.method, MatchMethod::Equals);
        QCOMPARE(request.text, u"a*"_s);
        QVERIFY(request.caseSensitive);

        ExpandSelectionSheet next(u"Group deselection"_s, request, nullptr);
        QTimer::singleShot(0, &next, [&] {
            QTest::keyClicks(next.focusWidget(), u"b"_s); // in place of the last one
            QTest::keyClick(next.focusWidget(), Qt::Key_Return);
        });
        QCOMPARE(next.getInput().text, u"b"_s);
        QTimer::singleShot(0, &next, [&] { QTest::keyClick(&next, Qt::Key_Escape); });
        const ExpandSelection cancelled = next.getInput();
        QCOMPARE(cancelled.text, QString());
        QCOMPARE(cancelled.target, MatchTarget::Date);
        QVERIFY(cancelled.caseSensitive);
    }

    void theWorkingSheetStaysWhateverIsPressed()
    {
        World world;
        WorkingSheet &sheet = world.sheet;
        auto *cancel = sheet.findChild<QPushButton *>();
        for (const auto strayKey : { Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space }) {
            sheet.showWorkingSheet();
            cancel->setFocus(Qt::TabFocusReason); // where an earlier run was left
            sheet.closeWorkingSheet();
            QVERIFY(!sheet.isWorkingSheetVisible());
            sheet.showWorkingSheet();
            QTest::keyClick(sheet.focusWidget(), strayKey);
            QCOMPARE(world.cancels, 0);
            QVERIFY(sheet.isWorkingSheetVisible());
        }
        QTest::keyClick(sheet.focusWidget(), Qt::Key_Tab);
        QCOMPARE(sheet.focusWidget(), cancel);
        QTest::keyClick(cancel, Qt::Key_Space);
        QTest::keyClick(&sheet, Qt::Key_Escape);
        sheet.close();
        QTest::mouseClick(cancel, Qt::LeftButton);
        QCOMPARE(world.cancels, 4);
        QVERIFY(sheet.isWorkingSheetVisible());
        QVERIFY(shows(sheet, u"Canceling progress..."_s));
    }

    void theWorkingSheetLeavesTheKeyboardToAQuestion()
    {
        QWidget window;
        window.show();
        World world(&window);
        InputSheet question(u"Name:"_s, {}, &window);
        QTimer::singleShot(0, &question, [&] {
            world.sheet.showWorkingSheet();
            QVERIFY(world.sheet.isWorkingSheetVisible());
            QCOMPARE(QApplication::activeModalWidget(), &question);
            question.reject();
        });
        question.getString();
        QVERIFY(world.sheet.isWorkingSheetVisible());
        QTRY_COMPARE(QApplication::activeModalWidget(), &world.sheet);
        world.sheet.closeWorkingSheet();
        QCOMPARE(QApplication::activeModalWidget(), nullptr);
    }

    void aSheetWaitsForTheKeyboardToComeBack()
    {
        QWidget window;
        QWidget question;
        World world(&window);
        EventCount shows(QEvent::Show, world.sheet);
        window.show();
        question.show();
        question.activateWindow();
        QTRY_VERIFY(question.isActiveWindow());
        // A run so short that it ends before: the sheet never takes the keyboard.
        world.sheet.showWorkingSheet();
        QVERIFY(world.sheet.isWorkingSheetVisible());
        world.sheet.closeWorkingSheet();
        QVERIFY(!world.sheet.isWorkingSheetVisible());
        window.activateWindow();
        QTRY_VERIFY(window.isActiveWindow());
        QCOMPARE(shows.count, 0);
        // A longer one: shown when the keyboard is back, or when it does not come.
        question.activateWindow();
        QTRY_VERIFY(question.isActiveWindow());
        world.sheet.showWorkingSheet();
        QCOMPARE(shows.count, 0);
        window.activateWindow();
        QTRY_COMPARE(shows.count, 1);
        world.sheet.closeWorkingSheet();
        question.activateWindow();
        QTRY_VERIFY(question.isActiveWindow());
        world.sheet.showWorkingSheet();
        QTRY_COMPARE(shows.count, 2);
    }

    void longAndHostileTextsNeverMoveTheWorkingSheet()
    {
        World world;
        WorkingSheet &sheet = world.sheet;
        sheet.setWorkingSheetMaxProgressValue(5000);
        sheet.showWorkingSheet();
        const QSize size = sheet.size();
        sheet.setWorkingSheetInfoText(QString(255, u'W'));
        sheet.setWorkingSheetDetailText(u"12 MB of 3 GB, about 100 minute(s) left"_s);
        sheet.setWorkingSheetProgressValue(4999);
        QCoreApplication::processEvents();
        QCOMPARE(sheet.size(), size);
        sheet.setWorkingSheetInfoText(u"Copying '<b>a\nb"_s + QChar(0xDCFF) + u"'"_s);
        QVERIFY(shows(sheet, u"Copying '<b>a\\nb\uFFFD'"_s));
        const auto labels = sheet.findChildren<QLabel *>();
        for (const QLabel *label : labels)
            QCOMPARE(label->textFormat(), Qt::PlainText);
    }

    void theDetailsOfAnEarlierRunAreGone()
    {
        World world;
        WorkingSheet &sheet = world.sheet;
        const auto *bar = sheet.findChild<QProgressBar *>();
        sheet.setWorkingSheetMaxProgressValue(12);
        sheet.showWorkingSheet();
        sheet.setWorkingSheetProgressValue(3);
        sheet.setWorkingSheetDetailText(u"1 MB of 2 MB"_s);
        QCOMPARE(bar->value(), 3);
        QVERIFY(shows(sheet, u"1 MB of 2 MB"_s));
        QVERIFY(shows(sheet, u"3 of 12"_s));
        sheet.closeWorkingSheet();
        sheet.setWorkingSheetMaxProgressValue(5);
        sheet.showWorkingSheet();
        QCOMPARE(bar->value(), 0);
        QVERIFY(!shows(sheet, u"1 MB of 2 MB"_s));
        QVERIFY(shows(sheet, u"0 of 5"_s));
    }

    void aFastRunDoesNotWaitForThePaintingOfItsTexts()
    {
        World world;
        world.sheet.showWorkingSheet();
        EventCount paints(QEvent::Paint, world.sheet);
        for (int item = 0; item < 1000; ++item) {
            world.sheet.setWorkingSheetInfoText(QString::number(item));
            world.sheet.setWorkingSheetProgressValue(item);
            QCoreApplication::processEvents();
        }
        QVERIFY(paints.count < 500);
        // The last text is painted, whatever was to be painted when it came.
        QTRY_VERIFY(world.sheet.updatesEnabled());
        world.sheet.update();
        world.sheet.setWorkingSheetInfoText(u"last"_s);
        paints.count = 0;
        QCoreApplication::processEvents();
        QTRY_VERIFY(paints.count > 0);
    }

    void theSpinnerTurnsUntilTheLastStop()
    {
        ActivitySpinner spinner;
        spinner.start();
        spinner.start();
        spinner.stop();
        QVERIFY(spinner.isSpinning());
        spinner.stop();
        spinner.stop();
        QVERIFY(!spinner.isSpinning());
        spinner.start();
        QVERIFY(spinner.isSpinning());
    }
};

QTEST_MAIN(tst_Sheets)
#include "tst_Sheets.moc"
