#include "commands/UpdateCheck.h"

#include "platform/desktop/HttpVersionServer.h"
#include "tests/support/World.h"

#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>

using namespace std::chrono_literals;

namespace {

// Answers every request with these bytes, and nothing else.
struct Server : QSslServer {
    Server(const QSslKey &key, const QSslCertificate &certificate, const QByteArray &answer)
    {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setPrivateKey(key);
        configuration.setLocalCertificate(certificate);
        setSslConfiguration(configuration);
        connect(this, &QSslServer::pendingConnectionAvailable, this, [this, answer] {
            QTcpSocket *socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket, answer] {
                ++requests;
                socket->write(answer);
            });
        });
        listen(QHostAddress::LocalHost);
    }
    int requests = 0;
};

std::optional<QByteArray> received(const QByteArray &text)
{
    return text.isNull() ? std::nullopt : std::optional(text);
}

} // namespace

class tst_UpdateCheck : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // A key and its own certificate, for 127.0.0.1 and this run alone.
    void initTestCase()
    {
        const TestFolder folder;
        folder.shell(
            u"openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 "
            "-subj /CN=twinleaf-test -addext subjectAltName=IP:127.0.0.1 "
            "-keyout key -out certificate"_s);
        _key = QSslKey(folder.read(u"key"_s), QSsl::Ec);
        _certificate = QSslCertificate(folder.read(u"certificate"_s));
    }

    void onlyAWholeAnswerOfATrustedServerCounts()
    {
        const QByteArray ok("HTTP/1.1 200 OK\r\nConnection: keep-alive\r\nContent-Length: ");
        const struct {
            const char *name;
            QByteArray answer;
            QByteArray received {}; // a null one: none
            bool trusted = true;
            std::chrono::milliseconds patience = 60s;
        } cases[] = {
            { "a version", ok + "4\r\n\r\n1.2\n", "1.2\n" },
            { "nothing", ok + "0\r\n\r\n", "" },
            { "not found", "HTTP/1.1 404 Not Found\r\nContent-Length: 3\r\n\r\n1.2" },
            { "silence", {}, {}, true, 2s },
            { "half an answer", ok + "100\r\n\r\n1.", {}, true, 2s },
            { "rubbish", QByteArray("\0\xFF\x7F no HTTP at all\r\n\r\n", 23) },
            { "megabytes", ok + "8000000\r\n\r\n" + QByteArray(8'000'000, '1') },
            { "to an address without encryption",
              "HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1:1/\r\nContent-Length: 0\r\n\r\n" },
            { "a stranger's certificate", ok + "4\r\n\r\n1.2\n", {}, false },
        };
        for (const auto &[name, answer, expected, trusted, patience] : cases) {
            QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
            configuration.setCaCertificates(trusted ? QList { _certificate }
                                                    : QList<QSslCertificate>());
            QSslConfiguration::setDefaultConfiguration(configuration);
            const Server server(_key, _certificate, answer);
            HttpVersionServer fetching(patience);
            QList<std::optional<QByteArray>> texts;
            const QString address = u"https://127.0.0.1:%1/version"_s.arg(server.serverPort());
            QVERIFY(fetching.fetch(address, [&](const auto &text) { texts += text; }));
            QVERIFY(texts.isEmpty()); // the window goes on meanwhile
            QTRY_VERIFY2_WITH_TIMEOUT(texts.size() == 1, name, 100'000);
            QVERIFY2(texts.first() == received(expected), name);
            QVERIFY2((server.requests > 0) == trusted, name);
        }
    }

    void otherAddressesMakeNoConnection()
    {
        HttpVersionServer fetching;
        for (const QString &address :
             { u""_s, u"http://localhost/"_s, u"file:///etc/hostname"_s, u"://"_s })
            QVERIFY(!fetching.fetch(address, [](const auto &) { QFAIL("called"); }));
    }

    void theAnswerDecidesTheAlert()
    {
        const QString newer = u"A newer version is available! Do you want to download it?"_s;
        const std::tuple<bool, QByteArray, QString> cases[] = {
            { true, "1.2.3",
              u"Your version of Twinleaf is up to date, you have the newest version!"_s },
            { true, "1.2.2", u"Cannot calculate version informations. Please try again!"_s },
            { true, "1.2.4", newer },
            { true, "1.2.3\n", newer },
            { true, {}, {} },
            { false,
              {},
              u"Cannot download version informations! Is the computer connected to the internet?"_s },
        };
        for (const auto &[connects, answer, text] : cases) {
            QTest::ignoreMessage(QtInfoMsg, "Current version of Twinleaf: 1.2.3");
            QTest::ignoreMessage(QtInfoMsg, "Downloading version informations...");
            if (connects && answer.isNull())
                QTest::ignoreMessage(QtWarningMsg,
                                     "The version informations could not be downloaded.");
            World world;
            world.versionServer.connects = connects;
            world.versionServer.answer = received(answer);
            if (!text.isEmpty())
                world.alerts.answer(Alert::Yes);
            const auto check = [&](const QString &file, const QString &page) {
                return UpdateCheck(world.versionServer, world.twinleaf, world.alerts,
                                   { file, page }, u"1.2.3"_s);
            };
            QVERIFY(!check(u"https://a"_s, {}).isOffered());
            QVERIFY(!check({}, u"https://b"_s).isOffered());
            QVERIFY(check(u"https://a"_s, u"https://b"_s).isOffered());
            check(u"https://a"_s, u"https://b"_s).checkForNewerVersion();
            QCOMPARE(world.alerts.last().text, text);
            QCOMPARE(world.workspace.calls.value(0).value(1),
                     text == newer ? u"https://b"_s : QString());
        }
    }

private:
    QSslKey _key;
    QSslCertificate _certificate;
};

QTEST_MAIN(tst_UpdateCheck)
#include "tst_UpdateCheck.moc"
