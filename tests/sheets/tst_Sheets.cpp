#include "model/Messages.h"
#include "platform/OpenDialogs.h"
#include "sheets/ExpandSelectionSheet.h"
#include "sheets/WorkingSheet.h"
#include "tests/support/OpenSheet.h"
#include "widgets/AlertSheets.h"
#include "widgets/ApplicationPanel.h"
#include "widgets/InputSheet.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

// The sheet of a run, which is asked to stop by the message.
struct Run {
    explicit Run(QWidget *window = nullptr)
        : sheet(bus, window)
    {
        bus.subscribe(CancelThread, this, &Run::cancel);
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
        using enum Qt::Key;
        const std::tuple<QString, Qt::Key, QString> rows[] = {
            { u"a.tar.gz"_s, Key_Return, u".gz"_s },
            { u"Makefile"_s, Key_Return, {} },
            { u".profile"_s, Key_Return, {} },
            { u"/home/x/a.b"_s, Key_Return, {} },
            { u"old"_s, Key_Enter, {} },
            { u"old"_s, Key_Escape, {} },
            { u"old.a\nb"_s, Key_Return, u".a\nb"_s },
            { u"old"_s + odd, Key_Return, odd },
        };
        for (const auto &[given, key, kept] : rows) {
            InputSheet sheet(u"Name:"_s, given, nullptr);
            auto *field = sheet.findChild<QLineEdit *>();
            QVERIFY(shows(sheet, u"&Name:"_s)); // a way to the field by key
            QCOMPARE(field->selectedText() + kept, given);
            whenSheetOpens(*qApp, [&, key = key](QWidget &) {
                QTest::keyClicks(field, u"typed"_s);
                QTest::keyClick(field, key);
            });
            QCOMPARE(sheet.getString(), key == Key_Escape ? QString() : u"typed"_s + kept);
            auto *cancel = sheet.findChildren<QPushButton *>().at(1);
            QTimer::singleShot(0, cancel, &QPushButton::click);
            QCOMPARE(sheet.getString(), QString());
        }
    }

    void aPatternIsChosenByKeys()
    {
        const auto press = [](QWidget &sheet, const QString &keys) {
            for (const QString &key : keys.split(u' '))
                QTest::keyClick(sheet.focusWidget(), Qt::Key(QKeySequence(key)[0].key()));
        };
        ExpandSelectionSheet sheet(u"Group selection"_s, {}, nullptr);
        const auto buttons = sheet.findChildren<QAbstractButton *>();
        for (const QAbstractButton *button : buttons)
            QVERIFY2(button->text().contains(u'&'), qPrintable(button->text()));
        whenSheetOpens(*qApp, [&](QWidget &) {
            QVERIFY(shows(sheet, u"Group selection"_s));
            // The text comes first; above it the end of the methods, and above them the third
            // target.
            press(sheet, u"A Backtab End Backtab Down Down Tab Tab Tab Space Return"_s);
        });
        const ExpandSelection request = sheet.getInput();
        QCOMPARE(request.target, MatchTarget::Date);
        QCOMPARE(request.method, MatchMethod::Equals);
        QCOMPARE(request.text, u"a"_s);
        QVERIFY(request.caseSensitive);

        ExpandSelectionSheet next(u"Group deselection"_s, request, nullptr);
        whenSheetOpens(*qApp,
                       [&](QWidget &) { press(next, u"B Return"_s); }); // in place of the last one
        QCOMPARE(next.getInput().text, u"b"_s);
        whenSheetOpens(*qApp, [&](QWidget &) { press(next, u"Escape"_s); });
        const ExpandSelection cancelled = next.getInput();
        QCOMPARE(cancelled.text, QString());
        QCOMPARE(cancelled.target, MatchTarget::Date);
        QVERIFY(cancelled.caseSensitive);
    }

    void theWorkingSheetStaysWhateverIsPressed()
    {
        Run world;
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
        const std::function<void()> ways[] = {
            [&] { QTest::keyClick(cancel, Qt::Key_Space); },
            [&] { QTest::keyClick(sheet.focusWidget(), Qt::Key_Escape); },
            [&] { sheet.close(); },
            [&] { QTest::mouseClick(cancel, Qt::LeftButton); },
        };
        for (const auto &asked : ways) {
            world.cancels = 0;
            asked();
            for (const auto &again : ways)
                again(); // once is enough
            QCOMPARE(world.cancels, 1);
            sheet.setWorkingSheetDetailText(u"1 MB of 2 MB"_s);
            QVERIFY(sheet.isWorkingSheetVisible());
            QVERIFY(shows(sheet, u"Canceling progress..."_s));
            QVERIFY(shows(sheet, u"The item under way is finished first."_s));
            sheet.closeWorkingSheet();
            sheet.showWorkingSheet();
            QVERIFY(!shows(sheet, u"The item under way is finished first."_s));
        }
    }

    void theWorkingSheetLeavesTheKeyboardToAQuestion()
    {
        QWidget window;
        window.show();
        Run world(&window);
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
        Run world(&window);
        EventCount shows(QEvent::Show, world.sheet);
        window.show();
        question.show();
        const auto activate = [](QWidget &widget) {
            widget.activateWindow();
            QTRY_VERIFY(widget.isActiveWindow());
        };
        activate(question);
        // A run so short that it ends before: the sheet never takes the keyboard.
        world.sheet.showWorkingSheet();
        QVERIFY(world.sheet.isWorkingSheetVisible());
        world.sheet.closeWorkingSheet();
        QVERIFY(!world.sheet.isWorkingSheetVisible());
        activate(window);
        QCOMPARE(shows.count, 0);
        // A longer one: shown when the keyboard is back, or when it does not come.
        activate(question);
        world.sheet.showWorkingSheet();
        QCOMPARE(shows.count, 0);
        window.activateWindow();
        QTRY_COMPARE(shows.count, 1);
        world.sheet.closeWorkingSheet();
        activate(question);
        world.sheet.showWorkingSheet();
        QTRY_COMPARE(shows.count, 2);
    }

    void theWorkingSheetShowsItsOwnRunWithoutMoving()
    {
        Run world;
        WorkingSheet &sheet = world.sheet;
        const auto *bar = sheet.findChild<QProgressBar *>();
        sheet.setWorkingSheetMaxProgressValue(5000);
        sheet.showWorkingSheet();
        const QSize size = sheet.size();
        const QString detail = u"12 MB of 3 GB, about 100 minute(s) left"_s;
        sheet.setWorkingSheetInfoText(QString(255, u'W'));
        sheet.setWorkingSheetDetailText(detail);
        sheet.setWorkingSheetProgressValue(4999);
        QCoreApplication::processEvents();
        QCOMPARE(sheet.size(), size);
        QCOMPARE(bar->value(), 4999);
        QVERIFY(shows(sheet, detail) && shows(sheet, u"4999 of 5000"_s));
        sheet.setWorkingSheetInfoText(u"Copying '<b>a\nb"_s + QChar(0xDCFF) + u"'"_s);
        QVERIFY(shows(sheet, u"Copying '<b>a\\nb\uFFFD'"_s));
        const auto labels = sheet.findChildren<QLabel *>();
        for (const QLabel *label : labels)
            QCOMPARE(label->textFormat(), Qt::PlainText);
        // Nothing is left of it in the next.
        sheet.closeWorkingSheet();
        sheet.setWorkingSheetMaxProgressValue(5);
        sheet.showWorkingSheet();
        QCOMPARE(bar->value(), 0);
        QVERIFY(!shows(sheet, detail) && shows(sheet, u"0 of 5"_s));
    }

    void aFastRunDoesNotWaitForThePaintingOfItsTexts()
    {
        Run world;
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

    void whatAKeyAnswers()
    {
        const Alert overwrite = Alert::overwriteQuestion(u"?"_s, u"small print"_s);
        const std::tuple<Alert, Qt::Key, Alert::Answer> rows[] = {
            { Alert::question(u"?"_s), Qt::Key_Return, Alert::Yes },
            { Alert::question(u"?"_s), Qt::Key_Escape, Alert::No },
            { overwrite, Qt::Key_Return, Alert::No },
            { overwrite, Qt::Key_Escape, Alert::No },
            { Alert::error(u"!"_s), Qt::Key_Return, Alert::Ok },
            { Alert::error(u"!"_s), Qt::Key_Escape, Alert::Ok },
        };
        for (const auto &[alert, key, answer] : rows) {
            whenSheetOpens(*qApp, [&, key = key](QWidget &sheet) {
                QVERIFY(open.anyOpen());
                QTest::keyClick(&sheet, key);
            });
            QCOMPARE(alerts.ask(alert), answer);
            QVERIFY(!open.anyOpen());
        }
        whenSheetOpens(*qApp,
                       [](QWidget &sheet) { sheet.findChildren<QPushButton *>()[2]->click(); });
        QCOMPARE(alerts.ask(overwrite), Alert::All);

        whenSheetOpens(*qApp, [](QWidget &sheet) {
            QTest::keyClicks(&sheet, u"any letter of what is typed on"_s);
            QVERIFY(sheet.isVisible());
            auto *afterPause = new QTimer(&sheet);
            afterPause->callOnTimeout([&sheet] { QTest::keyClick(&sheet, Qt::Key_Y); });
            afterPause->start(600);
        });
        QCOMPARE(alerts.ask(overwrite), Alert::Yes);
    }

    void aTextIsNeverMoreThanText()
    {
        int usual = 0;
        for (const QString &text : { u"short"_s, u"<b>"_s + QString(255, u'W') }) {
            whenSheetOpens(*qApp, [&](QWidget &sheet) {
                const auto labels = sheet.findChildren<QLabel *>();
                for (const QLabel *label : labels)
                    QVERIFY(label->text().isEmpty() || label->textFormat() == Qt::PlainText);
                usual = usual ? usual : sheet.width();
                QCOMPARE(sheet.width(), usual); // a long name wraps
                sheet.close();
            });
            alerts.ask(Alert::error(text));
        }
    }

    void inSilenceAQuestionIsCancelled()
    {
        std::optional<AlertSheets::Silence> silence;
        whenSheetOpens(*qApp, [&](QWidget &) { silence.emplace(alerts); });
        QCOMPARE(alerts.ask(Alert::question(u"open before"_s)), Alert::No);
        QCOMPARE(alerts.ask(Alert::question(u"asked meanwhile"_s)), Alert::No);
    }

    void aNarrowedListOffersItsFirst()
    {
        const QList<ApplicationPanel::Application> applications { { u"/1"_s, u"Calculator"_s, {} },
                                                                  { u"/2"_s, u"Editor"_s, {} },
                                                                  { u"/3"_s, u"Viewer"_s, {} } };
        const std::tuple<QString, Qt::Key, std::optional<QString>> rows[] = {
            { {}, Qt::Key_Return, u"/1"_s },
            { u"ED"_s, Qt::Key_Return, u"/2"_s },
            { u"e"_s, Qt::Key_Escape, std::nullopt },
        };
        for (const auto &[typed, key, chosen] : rows) {
            whenSheetOpens(*qApp, [typed = typed, key = key](QWidget &panel) {
                QTest::keyClicks(panel.findChild<QLineEdit *>(), typed);
                QTest::keyClick(&panel, key);
            });
            QCOMPARE(ApplicationPanel(applications, nullptr).choose(), chosen);
        }
        whenSheetOpens(*qApp, [](QWidget &panel) {
            QTest::keyClicks(panel.findChild<QLineEdit *>(), u"nothing"_s);
            QTest::keyClick(&panel, Qt::Key_Return);
            QVERIFY(panel.isVisible()); // nothing to take
            panel.close();
        });
        QCOMPARE(ApplicationPanel(applications, nullptr).choose(), std::nullopt);
    }

private:
    OpenDialogs open;
    AlertSheets alerts { open };
};

QTEST_MAIN(tst_Sheets)
#include "tst_Sheets.moc"
