#include "model/Messages.h"
#include "window/ActivitySpinner.h"
#include "window/ExpandSelectionSheet.h"
#include "window/InputSheet.h"
#include "window/WorkingSheet.h"

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

// What is asked to stop by the message.
struct Run {
    void cancel(const NoPayload &) { ++cancels; }
    int cancels = 0;
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
    void theInputSheetAnswersByKey_data();
    void theInputSheetAnswersByKey();
    void aNameIsSelectedWithoutItsExtension_data();
    void aNameIsSelectedWithoutItsExtension();
    void whatTheCancelButtonAnswersIsNoText();
    void aPatternIsChosenByKeys();
    void aCancelledPatternHasNoText();
    void theWorkingSheetStaysUntilTheRunClosesIt();
    void aStrayKeyDoesNotStopTheRun_data();
    void aStrayKeyDoesNotStopTheRun();
    void theWorkingSheetLeavesTheKeyboardToAQuestion();
    void theWorkingSheetShowsNamesOnOneLine();
    void theDetailsOfAnEarlierRunAreGone();
    void longTextsNeverMoveTheWorkingSheet();
    void theSpinnerTurnsUntilTheLastStop();
};

void tst_Sheets::theInputSheetAnswersByKey_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("answer");
    QTest::newRow("Return takes the text") << u"old"_s << Qt::Key_Return << u"typed"_s;
    QTest::newRow("Escape cancels") << u"old"_s << Qt::Key_Escape << QString();
    QTest::newRow("Return from the keypad") << u"old"_s << Qt::Key_Enter << u"typed"_s;
    QTest::newRow("a newline survives") << u"old.a\nb"_s << Qt::Key_Return << u"typed.a\nb"_s;
    QTest::newRow("a byte that is not UTF-8 survives")
        << u"old."_s + QChar(0xDCFF) << Qt::Key_Return << u"typed."_s + QChar(0xDCFF);
}

void tst_Sheets::theInputSheetAnswersByKey()
{
    QFETCH(QString, given);
    QFETCH(Qt::Key, key);
    InputSheet sheet(u"Name:"_s, given, nullptr);
    QTimer::singleShot(0, &sheet, [&] {
        auto *field = sheet.findChild<QLineEdit *>();
        QCOMPARE(field->text(), given);
        QTest::keyClicks(field, u"typed"_s); // over what is selected
        QTest::keyClick(field, key);
    });
    QTEST(sheet.getString(), "answer");
}

void tst_Sheets::aNameIsSelectedWithoutItsExtension_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("selected");
    QTest::newRow("file") << u"a.tar.gz"_s << u"a.tar"_s;
    QTest::newRow("no extension") << u"Makefile"_s << u"Makefile"_s;
    QTest::newRow("hidden") << u".profile"_s << u".profile"_s;
    QTest::newRow("path") << u"/home/x/a.b"_s << u"/home/x/a.b"_s;
}

void tst_Sheets::aNameIsSelectedWithoutItsExtension()
{
    QFETCH(QString, text);
    InputSheet sheet(u"Name:"_s, text, nullptr);
    QTEST(sheet.findChild<QLineEdit *>()->selectedText(), "selected");
}

void tst_Sheets::whatTheCancelButtonAnswersIsNoText()
{
    InputSheet sheet(u"Name:"_s, u"old"_s, nullptr);
    QTimer::singleShot(0, &sheet, [&] {
        const auto buttons = sheet.findChildren<QPushButton *>();
        QCOMPARE(buttons.size(), 2);
        QCOMPARE(buttons[0]->text(), u"OK"_s);
        QVERIFY(buttons[0]->isDefault());
        QCOMPARE(buttons[1]->text(), u"Cancel"_s);
        buttons[1]->click();
    });
    QCOMPARE(sheet.getString(), QString());
}

void tst_Sheets::aPatternIsChosenByKeys()
{
    ExpandSelectionSheet sheet(u"Group selection"_s, nullptr);
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
}

void tst_Sheets::aCancelledPatternHasNoText()
{
    ExpandSelectionSheet sheet(u"Group selection"_s, nullptr);
    QTimer::singleShot(0, &sheet, [&] {
        QTest::keyClicks(sheet.focusWidget(), u"typed"_s);
        QTest::keyClick(&sheet, Qt::Key_Escape);
    });
    QCOMPARE(sheet.getInput().text, QString());
}

void tst_Sheets::theWorkingSheetStaysUntilTheRunClosesIt()
{
    MessageBus bus;
    Run run;
    bus.subscribe(CancelThread, &run, &Run::cancel);
    WorkingSheet sheet(bus, nullptr);
    sheet.setWorkingSheetProgressValue(7);
    sheet.setWorkingSheetMaxProgressValue(12);
    sheet.showWorkingSheet();
    auto *bar = sheet.findChild<QProgressBar *>();
    QCOMPARE(bar->value(), 0);
    QCOMPARE(bar->maximum(), 12);
    sheet.setWorkingSheetProgressValue(3);
    QCOMPARE(bar->value(), 3);

    QTest::keyClick(&sheet, Qt::Key_Escape);
    sheet.close();
    QTest::mouseClick(sheet.findChild<QPushButton *>(), Qt::LeftButton);
    QCOMPARE(run.cancels, 3);
    QVERIFY(sheet.isWorkingSheetVisible());
    QVERIFY(shows(sheet, u"Canceling progress..."_s));
    sheet.closeWorkingSheet();
    QVERIFY(!sheet.isWorkingSheetVisible());
}

void tst_Sheets::aStrayKeyDoesNotStopTheRun_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("keypad") << Qt::Key_Enter;
    QTest::newRow("Space") << Qt::Key_Space;
}

void tst_Sheets::aStrayKeyDoesNotStopTheRun()
{
    QFETCH(Qt::Key, key);
    MessageBus bus;
    Run run;
    bus.subscribe(CancelThread, &run, &Run::cancel);
    WorkingSheet sheet(bus, nullptr);
    auto *cancel = sheet.findChild<QPushButton *>();
    sheet.showWorkingSheet();
    cancel->setFocus(Qt::TabFocusReason); // where an earlier run was left
    sheet.closeWorkingSheet();
    sheet.showWorkingSheet();
    QTest::keyClick(sheet.focusWidget(), key);
    QCOMPARE(run.cancels, 0);
    QVERIFY(sheet.isWorkingSheetVisible());

    QTest::keyClick(sheet.focusWidget(), Qt::Key_Tab);
    QCOMPARE(sheet.focusWidget(), cancel);
    QTest::keyClick(cancel, Qt::Key_Space);
    QCOMPARE(run.cancels, 1);
}

void tst_Sheets::theWorkingSheetLeavesTheKeyboardToAQuestion()
{
    MessageBus bus;
    QWidget window;
    window.show();
    WorkingSheet sheet(bus, &window);
    InputSheet question(u"Name:"_s, {}, &window);
    QTimer::singleShot(0, &question, [&] {
        sheet.showWorkingSheet();
        QVERIFY(sheet.isWorkingSheetVisible());
        QCOMPARE(QApplication::activeModalWidget(), &question);
        question.reject();
    });
    question.getString();
    QVERIFY(sheet.isWorkingSheetVisible());
    QCOMPARE(QApplication::activeModalWidget(), &sheet);
    sheet.closeWorkingSheet();
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
}

void tst_Sheets::theWorkingSheetShowsNamesOnOneLine()
{
    MessageBus bus;
    WorkingSheet sheet(bus, nullptr);
    sheet.setWorkingSheetInfoText(u"Copying '<b>a\nb"_s + QChar(0xDCFF) + u"'"_s);
    QVERIFY(shows(sheet, u"Copying '<b>a\\nb\uFFFD'"_s));
    const auto labels = sheet.findChildren<QLabel *>();
    for (const QLabel *label : labels)
        QCOMPARE(label->textFormat(), Qt::PlainText);
}

void tst_Sheets::theDetailsOfAnEarlierRunAreGone()
{
    MessageBus bus;
    WorkingSheet sheet(bus, nullptr);
    sheet.setWorkingSheetMaxProgressValue(2);
    sheet.showWorkingSheet();
    sheet.setWorkingSheetProgressValue(2);
    sheet.setWorkingSheetDetailText(u"1 MB of 2 MB"_s);
    QVERIFY(shows(sheet, u"1 MB of 2 MB"_s));
    QVERIFY(shows(sheet, u"2 of 2"_s));
    sheet.closeWorkingSheet();
    sheet.setWorkingSheetMaxProgressValue(5);
    sheet.showWorkingSheet();
    QVERIFY(!shows(sheet, u"1 MB of 2 MB"_s));
    QVERIFY(shows(sheet, u"0 of 5"_s));
}

void tst_Sheets::longTextsNeverMoveTheWorkingSheet()
{
    MessageBus bus;
    WorkingSheet sheet(bus, nullptr);
    sheet.setWorkingSheetMaxProgressValue(5000);
    sheet.showWorkingSheet();
    const QSize size = sheet.size();
    sheet.setWorkingSheetInfoText(QString(255, u'W'));
    sheet.setWorkingSheetDetailText(u"12 MB of 3 GB, about 100 minute(s) left"_s);
    sheet.setWorkingSheetProgressValue(4999);
    QCoreApplication::processEvents();
    QCOMPARE(sheet.size(), size);
}

void tst_Sheets::theSpinnerTurnsUntilTheLastStop()
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

QTEST_MAIN(tst_Sheets)
#include "tst_Sheets.moc"
