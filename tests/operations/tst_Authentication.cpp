#include "operations/Authentication.h"

#include "model/Messages.h"
#include "tests/support/AlertScript.h"
#include "tests/support/RecordedPrograms.h"
#include "tests/support/RecordedServices.h"
#include "tests/support/TestFolder.h"

#include <QProcess>

namespace {

// Answers what ps would.
class ScriptedPs final : public RecordedPrograms {
public:
    ProgramEnd runShell(const QString &, const ProgramAttention &attention) override
    {
        for (const QByteArray &line : lines.split('\n'))
            attention.line(line);
        return { .started = starts };
    }
    QByteArray lines;
    bool starts = true;
};

struct Rights {
    RecordedAuthorization services;
    AlertScript alerts;
    MessageBus bus;
    QStringList posted;
    ScriptedPs ps;
    Authentication authentication { services, ps, alerts, bus };

    Rights()
    {
        bus.subscribe(Authenticated, this, &Rights::gained);
        bus.subscribe(Deauthenticated, this, &Rights::lost);
    }
    void gained(const RightsChange &change) { note(u"gained"_s, change); }
    void lost(const RightsChange &change) { note(u"lost"_s, change); }
    void note(const QString &word, const RightsChange &change)
    {
        QCOMPARE(change.authentication, &authentication);
        posted.append(word);
    }
};

QStringList numbered(int count)
{
    QStringList words;
    for (int i = 0; i < count; ++i)
        words.append(QString::number(i));
    return words;
}

} // namespace

class tst_Authentication : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whichRightsAreAskedFor()
    {
        const std::tuple<const char *, QStringList, QStringList> cases[] = {
            { "none", {}, {} },
            { "one", { u"/bin/kill"_s }, { u"/bin/kill"_s } },
            { "too many", numbered(25), numbered(20) },
            { "just fits", { QString(127, u'p') }, { QString(127, u'p') } },
            { "bytes count", { QString(64, u'\u00FC') }, {} },
            { "one of two does not fit", { u"a"_s, QString(128, u'p') }, {} },
        };
        for (const auto &[name, commands, asked] : cases) {
            Rights rights;
            rights.services.holds = true;
            QVERIFY2(rights.authentication.isAuthenticated(commands) == !asked.isEmpty(), name);
            QCOMPARE(rights.authentication.fetchPassword(commands), !asked.isEmpty());
            QCOMPARE(rights.services.asked,
                     asked.isEmpty() ? QList<QStringList>() : QList<QStringList>(2, asked));
        }
    }

    void thePersonIsAskedOnceAndEachChangeIsPostedOnce()
    {
        Rights rights;
        const QStringList what { u"Twinleaf"_s };
        QVERIFY(!rights.authentication.fetchPassword(what)); // before anybody has looked
        QVERIFY(rights.services.asked.isEmpty());
        rights.services.personAgrees = false;
        QVERIFY(!rights.authentication.authenticate(what));
        QVERIFY(rights.posted.isEmpty());
        rights.services.personAgrees = true;
        QVERIFY(rights.authentication.authenticate(what));
        QCOMPARE(rights.posted, QStringList { u"gained"_s });
        rights.services.asked.clear();
        QVERIFY(rights.authentication.authenticate(what));
        QCOMPARE(rights.services.asked.size(), 2); // silently
        QCOMPARE(rights.posted.size(), 1);
        rights.authentication.deauthenticate();
        rights.authentication.deauthenticate();
        QCOMPARE(rights.posted, (QStringList { u"gained"_s, u"lost"_s }));
        QVERIFY(!rights.services.holds);
    }

    void commandRunsOnlyWithRights()
    {
        Rights rights;
        rights.services.personAgrees = false;
        QVERIFY(!rights.authentication.executeCommand(u"/bin/a"_s, numbered(3)));
        QVERIFY(rights.services.executed.isEmpty());
        rights.services.personAgrees = true;
        QVERIFY(rights.authentication.executeCommand(u"/bin/a"_s, numbered(25)));
        QCOMPARE(rights.services.executed.last(), QStringList { u"/bin/a"_s } + numbered(19));
        rights.services.status = 126;
        QTest::ignoreMessage(QtWarningMsg, "Error 126 in AuthorizationExecuteWithPrivileges");
        QVERIFY(!rights.authentication.executeCommand(u"/bin/a"_s));
    }

    void firstProcessOfTheName_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("process");
        QTest::newRow("nothing") << QByteArray() << u"top"_s << 0;
        QTest::newRow("at the start") << QByteArray("   12 top\n   99 grep top") << u"top"_s << 12;
        QTest::newRow("deep in it") << QByteArray(" 12 /usr/bin/top -d 1") << u"top"_s << 12;
        QTest::newRow("only in the search")
            << QByteArray(" 98 sh -c ps | grep \"top\"\n 99 grep top") << u"top"_s << 0;
        QTest::newRow("behind a search") << QByteArray(" 9 grep top\n 12 top") << u"top"_s << 0;
        QTest::newRow("the header") << QByteArray("  PID COMMAND") << u"COMMAND"_s << 0;
        QTest::newRow("found by pattern, not by name") << QByteArray(" 12 tap") << u"t.p"_s << 12;
        QTest::newRow("not of ASCII")
            << QByteArray(" 12 t\xC3\xBCr\n 13 grep t\xC3\xBCr") << u"t\u00FCr"_s << 0;
        QTest::newRow("empty") << QByteArray(" 12 top") << QString() << 0;
    }
    void firstProcessOfTheName()
    {
        QFETCH(QByteArray, lines);
        QFETCH(QString, name);
        Rights rights;
        rights.ps.lines = lines;
        QTEST(rights.authentication.getPID(name), "process");
        rights.ps.starts = false;
        const QString complaint = u"Error opening pipe: "_s + name;
        QTest::ignoreMessage(QtWarningMsg, qPrintable(complaint));
        QCOMPARE(rights.authentication.getPID(name), 0);
    }

    void namesOfProcessesAreData()
    {
        RecordedPrograms programs;
        RecordedAuthorization services;
        AlertScript alerts;
        MessageBus bus;
        Authentication authentication(services, programs, alerts, bus);
        const TestFolder folder;
        // All processes of the machine are looked through, another run of this among them.
        const QString our = u"twinleaf %1 "_s.arg(getpid());
        const QString none = our + u"none"_s;
        const QString trap = u"touch '%1'"_s.arg(folder.path(u"ran"_s));
        for (const QString &name :
             { u"$(%1)"_s.arg(trap), u"`%1`"_s.arg(trap), u"\";%1;\""_s.arg(trap),
               u"x\n%1"_s.arg(trap), u"-f%1"_s.arg(folder.path()), u"\\"_s })
            QCOMPARE(authentication.getPID(name + none), 0);
        QCOMPARE(folder.names(), QStringList());
        QVERIFY(programs.commandLines.isEmpty());
        QCOMPARE(authentication.getPID(none), 0); // but for the search itself
        QCOMPARE(programs.commandLines.last(),
                 u"/bin/ps -axwwopid,command | grep \"%1\""_s.arg(none));
        for (const QString &name : { our + u"one"_s, our + u"$(two)"_s }) {
            QProcess process;
            process.start(u"/bin/sh"_s, { u"-c"_s, u"echo here; read line; :"_s, name });
            QVERIFY(process.waitForReadyRead()); // merely started it has no words yet
            QCOMPARE(authentication.getPID(name), int(process.processId()));
            process.closeWriteChannel();
            QVERIFY(process.waitForFinished());
        }
    }

    void aProcessEndsOnlyByConsent()
    {
        Rights rights;
        QTest::ignoreMessage(QtWarningMsg, "Error killing process 0, invalid PID.");
        QVERIFY(!rights.authentication.killProcess(u"top"_s));
        const QString self = QString::number(getpid());
        rights.ps.lines = self.toLatin1() + " top";
        rights.alerts.answer({ Alert::No, Alert::Yes, Alert::Yes });
        QVERIFY(!rights.authentication.killProcess(u"top"_s));
        QVERIFY(rights.services.executed.isEmpty());
        QVERIFY2(rights.alerts.last().details.contains(u"tst_Authentication"),
                 "what would end is not shown");
        QVERIFY(rights.authentication.killProcess(u"top"_s));
        QCOMPARE(rights.services.executed.last(), (QStringList { u"/bin/kill"_s, self }));
        QCOMPARE(rights.services.subjects.last(), CommandSubject(*startOfProcess(getpid())));
        rights.services.status = 1;
        QTest::ignoreMessage(QtWarningMsg, "Error 1 in AuthorizationExecuteWithPrivileges");
        QVERIFY(rights.authentication.killProcess(u"top"_s)); // what it came to is not asked
    }
};

QTEST_MAIN(tst_Authentication)
#include "tst_Authentication.moc"
