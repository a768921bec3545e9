#include "util/Launching.h"

#include "tests/support/AlertScript.h"
#include "tests/support/RecordedWorkspace.h"

using namespace Qt::StringLiterals;

class tst_Launching : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void failureStopsNoOtherFile();
    void failureHasItsOwnTextAndButton_data();
    void failureHasItsOwnTextAndButton();
};

void tst_Launching::failureStopsNoOtherFile()
{
    RecordedWorkspace workspace;
    workspace.succeeds = false;
    AlertScript alerts;
    alerts.answer(Alert::Ok);
    alerts.answer(Alert::Ok);
    Launching(workspace, alerts).openFiles({ u"/a"_s, u"/b"_s }, u"/e.desktop"_s);
    const QStringList first { u"open"_s, u"/a"_s, u"/e.desktop"_s };
    const QStringList second { u"open"_s, u"/b"_s, u"/e.desktop"_s };
    QCOMPARE(workspace.calls, (QList<QStringList> { first, second }));
}

void tst_Launching::failureHasItsOwnTextAndButton_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("text");
    QTest::newRow("application") << "launch"
                                 << "Cannot launch application!";
    QTest::newRow("package") << "install"
                             << "Cannot launch installer or package!";
    QTest::newRow("file") << "open"
                          << "Application cannot open given file!";
}

void tst_Launching::failureHasItsOwnTextAndButton()
{
    QFETCH(QString, call);
    RecordedWorkspace workspace;
    workspace.succeeds = false;
    AlertScript alerts;
    alerts.answer(Alert::Ok);
    Launching launching(workspace, alerts);
    if (call == u"launch"_s)
        launching.launchApp(u"/a"_s);
    else if (call == u"install"_s)
        launching.launchInstallerPackage(u"/a"_s);
    else
        launching.launchFileURLs({ u"/a"_s });
    QCOMPARE(workspace.calls.value(0).value(0), call);
    const Alert alert = alerts.shown().value(0);
    QCOMPARE(alert.title, u"Twinleaf - Error"_s);
    QTEST(alert.text, "text");
    QCOMPARE(alert.buttons.size(), 1);
    QCOMPARE(alert.buttons.value(0).text, u"Ok"_s);
}

QTEST_GUILESS_MAIN(tst_Launching)
#include "tst_Launching.moc"
