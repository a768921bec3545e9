#include "widgets/AlertSheets.h"

#include "platform/OpenDialogs.h"
#include "widgets/ApplicationPanel.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

// Runs on the dialog that stands there when the event loop turns next.
void whenAsked(const std::function<void(QWidget &)> &act)
{
    QTimer::singleShot(0, qApp, [act] {
        QVERIFY(QApplication::activeModalWidget());
        act(*QApplication::activeModalWidget());
    });
}

} // namespace

class tst_AlertSheets : public QObject {
    Q_OBJECT

private Q_SLOTS:
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
            whenAsked([&, key = key](QWidget &sheet) {
                QVERIFY(open.anyOpen());
                QTest::keyClick(&sheet, key);
            });
            QCOMPARE(alerts.ask(alert), answer);
            QVERIFY(!open.anyOpen());
        }
        whenAsked([](QWidget &sheet) { sheet.findChildren<QPushButton *>()[2]->click(); });
        QCOMPARE(alerts.ask(overwrite), Alert::All);
    }

    void aTextIsNeverMoreThanText()
    {
        int usual = 0;
        for (const QString &text : { u"short"_s, u"<b>"_s + QString(255, u'W') }) {
            whenAsked([&](QWidget &sheet) {
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
        whenAsked([&](QWidget &) { silence.emplace(alerts); });
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
            whenAsked([typed = typed, key = key](QWidget &panel) {
                QTest::keyClicks(panel.findChild<QLineEdit *>(), typed);
                QTest::keyClick(&panel, key);
            });
            QCOMPARE(ApplicationPanel(applications, nullptr).choose(), chosen);
        }
        whenAsked([](QWidget &panel) {
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

QTEST_MAIN(tst_AlertSheets)
#include "tst_AlertSheets.moc"
