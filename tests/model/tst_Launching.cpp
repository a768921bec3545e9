#include "model/Launching.h"

#include "tests/support/AlertScript.h"
#include "tests/support/RecordedWorkspace.h"

using namespace Qt::StringLiterals;

class tst_Launching : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void failureHasItsOwnTextAndButton()
    {
        RecordedWorkspace workspace;
        workspace.succeeds = false;
        AlertScript alerts;
        alerts.decide = [](const Alert &) { return Alert::Ok; };
        Launching launching(workspace, alerts);
        launching.launchApp(u"/a"_s);
        launching.launchInstallerPackage(u"/a"_s);
        launching.launchFileURLs({ u"/a"_s, u"/b"_s }); // the first failure stops nothing
        launching.openAddress(u"https://a"_s);

        QStringList calls;
        QStringList texts;
        for (const QStringList &call : workspace.calls)
            calls.append(call[0] + call[1]);
        for (const Alert &alert : alerts.shown()) {
            texts.append(alert.text);
            QCOMPARE(alert.title, u"Twinleaf - Error"_s);
            QCOMPARE(alert.buttons.size(), 1);
            QCOMPARE(alert.buttons[0].text, u"Ok"_s);
        }
        QCOMPARE(calls.join(u", "_s), u"launch/a, install/a, open/a, open/b, addresshttps://a"_s);
        QCOMPARE(
            texts,
            QStringList({ u"Cannot launch application!"_s, u"Cannot launch installer or package!"_s,
                          u"Application cannot open given file!"_s,
                          u"Application cannot open given file!"_s,
                          u"Cannot launch application!"_s }));
    }
};

QTEST_GUILESS_MAIN(tst_Launching)
#include "tst_Launching.moc"
