#include "platform/desktop/PolkitAuthorization.h"

#include "platform/OpenDialogs.h"
#include "tests/support/OwnBus.h"
#include "tests/support/TestFolder.h"
#include "widgets/Sheet.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QProcess>
#include <QPushButton>
#include <QTimer>

#include <csignal>
#include <memory>
#include <sys/stat.h>

namespace {

const auto OurAction = u"org.twinleaf.Twinleaf.admin"_s;
const QStringList Some { u"Twinleaf"_s };

} // namespace

// Against a polkit of the test's own on a bus of its own, and a stand-in for pkexec.
class tst_PolkitAuthorization : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", _bus.start());
        // Says what it got, and does what the file "does" holds.
        _folder.write(u"pkexec"_s,
                      "#!/bin/bash\ncd \"${0%/*}\"\nprintf '%s\\n' \"$@\" > got\n"
                      "printf '%s' \"$PPID ${HOME-none}\" > surroundings\n. ./does\n");
        _folder.shell(u"chmod +x pkexec"_s);
    }
    void init()
    {
        startPolkit();
        _dialogs = std::make_unique<OpenDialogs>();
        _authorization = std::make_unique<PolkitAuthorization>(
            *_dialogs, PolkitAuthorization::Programs { _folder.path(u"pkexec"_s), u"/helper"_s });
    }
    void cleanup()
    {
        _authorization.reset();
        stopPolkit();
    }
    void cleanupTestCase() { _bus.stop(); }

    void rightsComeAndGoByPolkit()
    {
        QVERIFY(!_authorization->holdsRights(Some));
        QCOMPARE(said(), QStringList { u"check "_s + OurAction + u" 0"_s });
        QVERIFY(!_authorization->askForRights({}));
        QVERIFY(_authorization->askForRights(Some));
        QVERIFY(_authorization->holdsRights({ u"/bin/kill"_s }));
        QVERIFY(!_authorization->holdsRights({}));
        QCOMPARE(
            said(),
            (QStringList { u"ask "_s + OurAction + u" 0"_s, u"check "_s + OurAction + u" 0"_s }));
        tell(u"Expire"_s);
        QVERIFY(!_authorization->holdsRights(Some));
    }

    void ownRightsAreGivenUpOneByOneAndNoOthers()
    {
        _authorization->giveUpRights(); // there are none: nobody is asked
        QCOMPARE(said(), QStringList());
        QVERIFY(_authorization->askForRights(Some));
        QVERIFY(_authorization->askForRights(Some));
        tell(u"GrantOther"_s);
        QCOMPARE(held(), 3);
        said();
        _authorization->giveUpRights();
        QCOMPARE(said().filter(u"revoke"_s), (QStringList { u"revoke tmp1"_s, u"revoke tmp2"_s }));
        QCOMPARE(held(), 1);
        QVERIFY(!_authorization->holdsRights(Some));
        QVERIFY(_authorization->askForRights(Some));
        QVERIFY(_authorization->holdsRights(Some));
    }

    // By polkit's own rules, or for want of a session.
    void whatCannotBeRevokedIsNotUsed_data()
    {
        QTest::addColumn<QString>("person");
        QTest::newRow("rules") << u"always"_s;
        QTest::newRow("no session") << u"keeps"_s;
    }
    void whatCannotBeRevokedIsNotUsed()
    {
        QFETCH(QString, person);
        tell(u"Person"_s, person);
        QVERIFY(_authorization->askForRights(Some));
        QVERIFY(_authorization->holdsRights(Some));
        if (person == u"keeps")
            QTest::ignoreMessage(QtWarningMsg, "Rights stay: No session"); // once
        _authorization->giveUpRights();
        QVERIFY(!_authorization->holdsRights(Some));
        QVERIFY(_authorization->askForRights(Some));
        QVERIFY(_authorization->holdsRights(Some));
        tell(u"Person"_s, u"agrees"_s);
    }

    void whoDoesNotGetThemHasNone_data()
    {
        QTest::addColumn<QString>("person");
        QTest::addColumn<QString>("complaint");
        QTest::newRow("refuses") << u"refuses"_s << QString();
        QTest::newRow("no agent") << u"fails"_s << u"No rights: No agent"_s;
    }
    void whoDoesNotGetThemHasNone()
    {
        QFETCH(QString, person);
        QFETCH(QString, complaint);
        tell(u"Person"_s, person);
        if (!complaint.isEmpty())
            QTest::ignoreMessage(QtWarningMsg, qPrintable(complaint));
        QVERIFY(!_authorization->askForRights(Some));
        QVERIFY(!_authorization->holdsRights(Some));
    }

    void thePersonCanGiveUpWaiting()
    {
        tell(u"Person"_s, u"waits"_s);
        bool sawAnother = true;
        whenSheetOpens([&](QDialog &sheet) {
            QVERIFY(_dialogs->anyOpen());
            sawAnother = _authorization->askForRights(Some); // one question at a time
            sheet.findChild<QPushButton *>()->click();
        });
        QVERIFY(!_authorization->askForRights(Some));
        QVERIFY(!sawAnother);
        QStringList told;
        QTRY_VERIFY((told += said()).contains(u"cancel"_s));
        QVERIFY(!_dialogs->anyOpen());
    }

    void polkitThatGoesAwayHasRefused()
    {
        tell(u"Person"_s, u"waits"_s);
        whenSheetOpens([&](QDialog &) { stopPolkit(); });
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^No rights: .*"_s));
        QVERIFY(!_authorization->askForRights(Some));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^No rights: .*"_s));
        QVERIFY(!_authorization->holdsRights(Some));
        startPolkit();
        QVERIFY(_authorization->askForRights(Some));
    }

    void onlyKnownCommandsRun_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<CommandSubject>("subject");
        const CommandSubject item(FileIdentity { 7, 8 });
        QTest::addColumn<QString>("words"); // "": it does not run
        const QString chown = u"/usr/sbin/chown"_s;
        const QString chattr = u"/usr/bin/chattr"_s;
        const QString path = FileName::fromBytes("/a b/-%\n\xFF");
        QTest::newRow("chown") << chown << QStringList { u"root:admin"_s, path } << item
                               << u"chown root:admin /a b/-%25%0a%ff 7:8"_s;
        QTest::newRow("chattr") << chattr << QStringList { u"+i"_s, u"/x"_s } << item
                                << u"immutable +i /x 7:8"_s;
        QTest::newRow("kill") << u"/bin/kill"_s << QStringList { u"12"_s }
                              << CommandSubject(ProcessStart { 9 }) << u"kill 12 9"_s;
        QTest::newRow("no process")
            << u"/bin/kill"_s << QStringList { u"12"_s } << CommandSubject() << QString();
        QTest::newRow("no item") << chown << QStringList { u"root:admin"_s, u"/x"_s }
                                 << CommandSubject() << QString();
        QTest::newRow("more") << chown << QStringList { u"root:admin"_s, u"/x"_s, u"/y"_s } << item
                              << QString();
        QTest::newRow("kill more") << u"/bin/kill"_s << QStringList { u"-9"_s, u"12"_s }
                                   << CommandSubject(ProcessStart { 9 }) << QString();
        QTest::newRow("another") << u"/bin/rm"_s << QStringList { u"-r"_s, u"/x"_s } << item
                                 << QString();
        QTest::newRow("by name") << u"chown"_s << QStringList { u"root:admin"_s, u"/x"_s } << item
                                 << QString();
    }
    void onlyKnownCommandsRun()
    {
        QFETCH(QString, command);
        QFETCH(QStringList, arguments);
        QFETCH(CommandSubject, subject);
        QFETCH(QString, words);
        _folder.write(u"got"_s);
        _folder.write(u"does"_s, "exit 0\n");
        QCOMPARE(_authorization->execute(command, arguments, subject) == 0, !words.isEmpty());
        const QString got = QString::fromUtf8(_folder.read(u"got"_s));
        if (words.isEmpty())
            QCOMPARE(got, QString());
        else
            QCOMPARE(got.split(u'\n', Qt::SkipEmptyParts).join(u' '),
                     u"--disable-internal-agent /helper "_s + words);
    }

    void endOfTheHelperIsWaitedFor()
    {
        const auto run = [this] {
            return _authorization->execute(u"/bin/kill"_s, { u"12"_s }, ProcessStart { 9 });
        };
        // polkit knows us as the one that has started it; nothing of our environment comes along.
        _folder.write(u"does"_s, "echo 'why not' >&2; exit 126\n");
        QTest::ignoreMessage(QtWarningMsg, "why not");
        QCOMPARE(run(), 126);
        QCOMPARE(_folder.read(u"surroundings"_s), QByteArray::number(getpid()) + " none");

        // With the window alive.
        QCOMPARE(mkfifo(_folder.bytes(u"gate"_s), 0600), 0);
        _folder.write(u"does"_s, "read line < gate; exit 3\n");
        whenSheetOpens([&](QDialog &) { _folder.write(u"gate"_s, "go\n"); });
        QCOMPARE(run(), 3);

        // Given up while it asks for the password.
        _folder.write(u"does"_s, "read line < gate; exit 3\n");
        whenSheetOpens([&](QDialog &sheet) { sheet.findChild<QPushButton *>()->click(); });
        QCOMPARE(run(), 128 + SIGTERM);

        // Once it has the rights there is nothing to give up, and it is waited for.
        const auto nothingToGiveUp = [&](QDialog &sheet) {
            QCOMPARE(sheet.accessibleName(), u"Changing..."_s);
            QVERIFY(!sheet.findChild<QPushButton *>());
            sheet.reject();
            QVERIFY(sheet.isVisible());
            _folder.write(u"gate"_s, "go\n");
        };
        _folder.write(u"does"_s, "trap '' TERM; read line < gate; exit 3\n");
        whenSheetOpens([&](QDialog &sheet) {
            sheet.findChild<QPushButton *>()->click();
            whenSheetOpens(nothingToGiveUp);
        });
        QCOMPARE(run(), 3);
        QVERIFY(_authorization->askForRights(Some));
        whenSheetOpens(nothingToGiveUp);
        QCOMPARE(run(), 3);

        PolkitAuthorization nothing(*_dialogs, { _folder.path(u"none"_s), u"/helper"_s });
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"none"_s));
        QCOMPARE(nothing.execute(u"/bin/kill"_s, { u"12"_s }, ProcessStart { 9 }), 127);
    }

    // The last one: there is none any more.
    void withoutABusNobodyWaits()
    {
        cleanupTestCase();
        _authorization = std::make_unique<PolkitAuthorization>(
            *_dialogs, PolkitAuthorization::Programs { _folder.path(u"pkexec"_s), {} });
        bool waits = false;
        whenSheetOpens([&](QDialog &sheet) {
            waits = true;
            sheet.reject();
        });
        QTest::ignoreMessage(QtWarningMsg, "No rights: Not connected to D-Bus server");
        QVERIFY(!_authorization->askForRights(Some));
        QVERIFY(!waits);
    }

private:
    void startPolkit()
    {
        _polkit.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        _polkit.start(u"/usr/bin/python3"_s, // for which Debian packs the module

                      { u"-m"_s, u"dbusmock"_s, u"--system"_s, u"--template"_s,
                        QStringLiteral(TWINLEAF_SUPPORT_FOLDER "/polkit.py") });
        QVERIFY2(_polkit.waitForStarted(), "python3 is missing");
        const auto *names = QDBusConnection::systemBus().interface();
        QTRY_VERIFY_WITH_TIMEOUT(names->isServiceRegistered(_service)
                                     || _polkit.state() == QProcess::NotRunning,
                                 30'000);
        QVERIFY2(_polkit.state() == QProcess::Running, "python3-dbusmock is missing");
    }
    void stopPolkit()
    {
        _polkit.kill();
        _polkit.waitForFinished();
    }
    QDBusMessage tell(const QString &method, const QVariant &argument = {}) const
    {
        QDBusMessage call =
            QDBusMessage::createMethodCall(_service, u"/org/freedesktop/PolicyKit1/Authority"_s,
                                           u"org.freedesktop.DBus.Mock"_s, method);
        if (argument.isValid())
            call << argument;
        const QDBusMessage reply = QDBusConnection::systemBus().call(call);
        if (reply.type() != QDBusMessage::ReplyMessage)
            qFatal("%s: %s", qPrintable(method), qPrintable(reply.errorMessage()));
        return reply;
    }
    QStringList said() const { return tell(u"Said"_s).arguments().value(0).toStringList(); }
    int held() const { return tell(u"Held"_s).arguments().value(0).toInt(); }

    template <typename Do>
    void whenSheetOpens(Do what)
    {
        auto *look = new QTimer(_dialogs.get());
        look->callOnTimeout([what, look] {
            auto *sheet = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            if (!sheet || !sheet->isVisible())
                return;
            look->deleteLater();
            what(*sheet);
        });
        look->start(10);
    }

    const QString _service = u"org.freedesktop.PolicyKit1"_s;
    const TestFolder _folder;
    OwnBus _bus;
    QProcess _polkit;
    std::unique_ptr<OpenDialogs> _dialogs;
    std::unique_ptr<PolkitAuthorization> _authorization;
};

QTEST_MAIN(tst_PolkitAuthorization)
#include "tst_PolkitAuthorization.moc"
