#include "model/Messages.h"
#include "window/ActivitySpinner.h"
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

} // namespace

class tst_Sheets : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theInputSheetAnswersByKey_data();
    void theInputSheetAnswersByKey();
    void aNameIsSelectedWithoutItsExtension_data();
    void aNameIsSelectedWithoutItsExtension();
    void theWorkingSheetStaysUntilTheRunClosesIt();
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
    QTest::newRow("a byte that is not UTF-8 survives")
        << QString(QChar(0xDCFF)) + u".old"_s << Qt::Key_Return << u"typed.old"_s;
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
    const auto labels = sheet.findChildren<QLabel *>();
    QVERIFY(std::any_of(labels.begin(), labels.end(), [](const QLabel *label) {
        return label->text() == u"Canceling progress..."_s;
    }));
    sheet.closeWorkingSheet();
    QVERIFY(!sheet.isWorkingSheetVisible());
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
