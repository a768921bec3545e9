#include "util/Launching.h"

#include "tests/support/AlertScript.h"
#include "tests/support/RecordedWorkspace.h"

using namespace Qt::StringLiterals;

class tst_Launching : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void failureHasItsOwnTextAndButton_data();
    void failureHasItsOwnTextAndButton();
};

void tst_Launching::failureHasItsOwnTextAndButton_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<int>("asked");
    QTest::addColumn<QString>("text");
    QTest::newRow("application") << "launch" << 1 << "Cannot launch application!";
    QTest::newRow("package") << "install" << 1 << "Cannot launch installer or package!";
    QTest::newRow("files") << "open" << 2 << "Application cannot open given file!";
}

void tst_Launching::failureHasItsOwnTextAndButton()
{
    QFETCH(QString, call);
    QFETCH(int, asked);
    RecordedWorkspace workspace;
    workspace.succeeds = false;
    AlertScript alerts;
    for (int i = 0; i < asked; ++i)
        alerts.answer(Alert::Ok);
    Launching launching(workspace, alerts);
    if (call == u"launch"_s)
        launching.launchApp(u"/a"_s);
    else if (call == u"install"_s)
        launching.launchInstallerPackage(u"/a"_s);
    else
        launching.launchFileURLs({ u"/a"_s, u"/b"_s }); // the first failure stops nothing
    QCOMPARE(workspace.calls.size(), asked);
    QCOMPARE(workspace.calls.constLast().value(0), call);
    const Alert alert = alerts.shown().value(0);
    QCOMPARE(alert.title, u"Twinleaf - Error"_s);
    QTEST(alert.text, "text");
    QCOMPARE(alert.buttons.size(), 1);
    QCOMPARE(alert.buttons.value(0).text, u"Ok"_s);
}

QTEST_GUILESS_MAIN(tst_Launching)
#include "tst_Launching.moc"
