#include "commands/UpdateCheck.h"

#include "files/Waiting.h"
#include "model/Launching.h"
#include "tests/support/AlertScript.h"
#include "tests/support/RecordedWorkspace.h"
#include "tests/support/ScriptedVersionServer.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_UpdateCheck : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theAnswerDecidesTheAlert()
    {
        const QString newer = u"A newer version is available! Do you want to download it?"_s;
        const QList<std::tuple<bool, std::optional<QByteArray>, QString, int>> cases {
            { true, "1.2.3",
              u"Your version of Twinleaf is up to date, you have the newest version!"_s, 0 },
            { true, "1.2.2", u"Cannot calculate version informations. Please try again!"_s, 0 },
            { true, "1.2.4", newer, 1 },
            { true, "1.2.3\n", newer, 1 },
            { true, {}, {}, 0 },
            { false,
              {},
              u"Cannot download version informations! Is the computer connected to the internet?"_s,
              0 },
        };
        for (const auto &[connects, answer, text, pagesOpened] : cases) {
            QTest::ignoreMessage(QtInfoMsg, "Current version of Twinleaf: 1.2.3");
            QTest::ignoreMessage(QtInfoMsg, "Downloading version informations...");
            if (connects && !answer)
                QTest::ignoreMessage(QtWarningMsg,
                                     "The version informations could not be downloaded.");
            ScriptedVersionServer server;
            server.connects = connects;
            server.answer = answer;
            RecordedWorkspace workspace;
            AlertScript alerts;
            if (!text.isEmpty())
                alerts.answer(Alert::Yes);
            Waiting waiting;
            Launching launching(workspace, alerts, waiting);
            UpdateCheck check(server, launching, alerts, { u"https://a"_s, u"https://b"_s },
                              u"1.2.3"_s);
            QVERIFY(check.isOffered());
            for (const UpdateCheck::Addresses &one :
                 { UpdateCheck::Addresses { u"https://a"_s, {} }, { {}, u"https://b"_s } })
                QVERIFY(!UpdateCheck(server, launching, alerts, one, u"1"_s).isOffered());
            check.checkForNewerVersion();
            QCOMPARE(alerts.shown().value(0).text, text);
            QCOMPARE(workspace.calls.size(), pagesOpened);
            QCOMPARE(workspace.calls.value(0).value(1),
                     pagesOpened > 0 ? u"https://b"_s : QString());
        }
    }
};

QTEST_MAIN(tst_UpdateCheck)
#include "tst_UpdateCheck.moc"
