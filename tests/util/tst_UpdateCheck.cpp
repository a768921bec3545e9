#include "util/UpdateCheck.h"

#include "platform/VersionServer.h"
#include "tests/support/AlertScript.h"
#include "tests/support/RecordedWorkspace.h"
#include "util/Launching.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Answers at once what the test tells it to.
class ScriptedServer final : public VersionServer {
public:
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
    void hexValueShiftsForEveryCharacter_data();
    void hexValueShiftsForEveryCharacter();
    void theAnswerDecidesTheAlert_data();
    void theAnswerDecidesTheAlert();
    void aFailedDownloadIsOnlyLogged();
};

void tst_UpdateCheck::hexValueShiftsForEveryCharacter_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<qint32>("value");
    QTest::newRow("empty") << QByteArray("") << 0;
    QTest::newRow("dots") << QByteArray("1.2.3") << 0x10203;
    QTest::newRow("two digits") << QByteArray("1.10") << 0x1010;
    QTest::newRow("line end") << QByteArray("1.2.3\n") << 0x102030;
    QTest::newRow("lower case") << QByteArray("ff") << 0;
    QTest::newRow("upper case") << QByteArray("FF") << 255;
    QTest::newRow("wraps") << QByteArray("123456789") << 0x23456789;
    QTest::newRow("wraps below zero") << QByteArray("F0000000") << qint32(0xF0000000U);
}

void tst_UpdateCheck::hexValueShiftsForEveryCharacter()
{
    QFETCH(QByteArray, text);
    QTEST(UpdateCheck::hexValue(text), "value");
}

void tst_UpdateCheck::theAnswerDecidesTheAlert_data()
{
    QTest::addColumn<QByteArray>("newest");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("pagesOpened");
    const QString newer = u"A newer version is available! Do you want to download it?"_s;
    QTest::newRow("the same") << QByteArray(
        "1.2.3") << u"Your version of Twinleaf is up to date, you have the newest version!"_s
                              << 0;
    QTest::newRow("older") << QByteArray("1.2.2")
                           << u"Cannot calculate version informations. Please try again!"_s << 0;
    QTest::newRow("newer") << QByteArray("1.2.4") << newer << 1;
    QTest::newRow("the same and a line end") << QByteArray("1.2.3\n") << newer << 1;
}

void tst_UpdateCheck::theAnswerDecidesTheAlert()
{
    QFETCH(QByteArray, newest);
    QTest::ignoreMessage(QtInfoMsg, "Current version of Twinleaf: 1.2.3");
    QTest::ignoreMessage(QtInfoMsg, "Downloading version informations...");
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression(u"^Newest version: "_s));
    ScriptedServer server;
    server.answer = newest;
    RecordedWorkspace workspace;
    AlertScript alerts;
    alerts.answer(Alert::Yes);
    Launching launching(workspace, alerts);
    UpdateCheck check(server, launching, alerts, { u"https://a"_s, u"https://b"_s }, u"1.2.3"_s);
    check.checkForNewerVersion();
    QTEST(alerts.shown().last().text, "text");
    QTEST(int(workspace.calls.size()), "pagesOpened");
}

void tst_UpdateCheck::aFailedDownloadIsOnlyLogged()
{
    QTest::ignoreMessage(QtInfoMsg, "Current version of Twinleaf: 1.2.3");
    QTest::ignoreMessage(QtInfoMsg, "Downloading version informations...");
    QTest::ignoreMessage(QtWarningMsg, "The version informations could not be downloaded.");
    ScriptedServer server;
    RecordedWorkspace workspace;
    AlertScript alerts;
    Launching launching(workspace, alerts);
    UpdateCheck check(server, launching, alerts, { u"https://a"_s, {} }, u"1.2.3"_s);
    check.checkForNewerVersion();

    // No connection at all is told.
    server.connects = false;
    QTest::ignoreMessage(QtInfoMsg, "Current version of Twinleaf: 1.2.3");
    QTest::ignoreMessage(QtInfoMsg, "Downloading version informations...");
    alerts.answer(Alert::Ok);
    check.checkForNewerVersion();
    QCOMPARE(alerts.shown().size(), 1);
}

QTEST_MAIN(tst_UpdateCheck)
#include "tst_UpdateCheck.moc"
