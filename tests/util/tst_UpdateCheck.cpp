#include "util/UpdateCheck.h"

#include "platform/VersionServer.h"
#include "tests/support/AlertScript.h"
#include "tests/support/RecordedWorkspace.h"
#include "util/Launching.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Answers at once what the test tells it to.
struct ScriptedServer final : VersionServer {
    bool fetch(const QString &,
               const std::function<void(std::optional<QByteArray>)> &received) override
    {
        if (connects)
            received(answer);
        return connects;
    }
    bool connects = true;
    std::optional<QByteArray> answer;
};

} // namespace

class tst_UpdateCheck : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hexValueShiftsForEveryCharacter();
    void theAnswerDecidesTheAlert();
};

void tst_UpdateCheck::hexValueShiftsForEveryCharacter()
{
    // Long texts wrap around, also below zero.
    const QList<std::pair<QByteArray, quint32>> cases {
        { "", 0 },   { "1.2.3", 0x10203 }, { "1.10", 0x1010 },          { "1.2.3\n", 0x102030 },
        { "ff", 0 }, { "FF", 0xFF },       { "123456789", 0x23456789 }, { "F0000000", 0xF0000000 },
    };
    for (const auto &[text, value] : cases)
        QCOMPARE(UpdateCheck::hexValue(text), qint32(value));
}

void tst_UpdateCheck::theAnswerDecidesTheAlert()
{
    const QString newer = u"A newer version is available! Do you want to download it?"_s;
    const QList<std::tuple<bool, std::optional<QByteArray>, int, QString>> cases {
        { true, "1.2.3", 0,
          u"Your version of Twinleaf is up to date, you have the newest version!"_s },
        { true, "1.2.2", 0, u"Cannot calculate version informations. Please try again!"_s },
        { true, "1.2.4", 1, newer },
        { true, "1.2.3\n", 1, newer },
        { true, {}, 0, {} },
        { false,
          {},
          0,
          u"Cannot download version informations! Is the computer connected to the internet?"_s },
    };
    for (const auto &[connects, answer, pagesOpened, text] : cases) {
        QTest::ignoreMessage(QtInfoMsg, "Current version of Twinleaf: 1.2.3");
        QTest::ignoreMessage(QtInfoMsg, "Downloading version informations...");
        if (connects && !answer)
            QTest::ignoreMessage(QtWarningMsg, "The version informations could not be downloaded.");
        ScriptedServer server;
        server.connects = connects;
        server.answer = answer;
        RecordedWorkspace workspace;
        AlertScript alerts;
        if (!text.isEmpty())
            alerts.answer(Alert::Yes);
        Launching launching(workspace, alerts);
        UpdateCheck check(server, launching, alerts, { u"https://a"_s, u"https://b"_s },
                          u"1.2.3"_s);
        check.checkForNewerVersion();
        QCOMPARE(alerts.shown().value(0).text, text);
        QCOMPARE(workspace.calls.size(), pagesOpened);
        QCOMPARE(workspace.calls.value(0).value(1), pagesOpened > 0 ? u"https://b"_s : QString());
    }
}

QTEST_MAIN(tst_UpdateCheck)
#include "tst_UpdateCheck.moc"
