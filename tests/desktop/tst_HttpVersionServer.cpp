#include "platform/desktop/HttpVersionServer.h"

#include "tests/support/TestFolder.h"

#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QTest>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

// A key and its own certificate, for 127.0.0.1 and this run alone.
struct Identity {
    Identity()
    {
        folder.shell(
            u"openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 "
            "-subj /CN=twinleaf-test -addext subjectAltName=IP:127.0.0.1 "
            "-keyout key -out certificate"_s);
    }
    QSslKey key() const { return QSslKey(folder.read(u"key"_s), QSsl::Ec); }
    QSslCertificate certificate() const { return QSslCertificate(folder.read(u"certificate"_s)); }

    TestFolder folder;
};

// Answers every request with these bytes, and nothing else.
struct Server : QSslServer {
    Server(const Identity &identity, const QByteArray &answer)
    {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setPrivateKey(identity.key());
        configuration.setLocalCertificate(identity.certificate());
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

} // namespace

class tst_HttpVersionServer : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void answers_data();
    void answers();
    void otherAddressesMakeNoConnection();

private:
    const Identity _identity;
};

void tst_HttpVersionServer::answers_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<std::optional<QByteArray>>("received");
    QTest::addColumn<bool>("trusted");
    QTest::addColumn<std::chrono::milliseconds>("patience");
    const auto row = [](const char *name, const QByteArray &answer,
                        const std::optional<QByteArray> &received = {}, bool trusted = true,
                        std::chrono::milliseconds patience = 60s) {
        QTest::newRow(name) << answer << received << trusted << patience;
    };
    const QByteArray ok("HTTP/1.1 200 OK\r\nConnection: keep-alive\r\nContent-Length: ");
    row("a version", ok + "4\r\n\r\n1.2\n", "1.2\n");
    row("nothing", ok + "0\r\n\r\n", "");
    row("not found", "HTTP/1.1 404 Not Found\r\nContent-Length: 3\r\n\r\n1.2");
    row("silence", {}, {}, true, 2s);
    row("half an answer", ok + "100\r\n\r\n1.", {}, true, 2s);
    row("rubbish", QByteArray("\0\xFF\x7F no HTTP at all\r\n\r\n", 23));
    row("megabytes", ok + "8000000\r\n\r\n" + QByteArray(8'000'000, '1'));
    row("to an address without encryption",
        "HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1:1/\r\nContent-Length: 0\r\n\r\n");
    row("a stranger's certificate", ok + "4\r\n\r\n1.2\n", {}, false);
}

void tst_HttpVersionServer::answers()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const bool, trusted);
    QFETCH(const std::chrono::milliseconds, patience);
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(trusted ? QList { _identity.certificate() }
                                            : QList<QSslCertificate>());
    QSslConfiguration::setDefaultConfiguration(configuration);
    const Server server(_identity, answer);
    HttpVersionServer fetching(patience);
    QList<std::optional<QByteArray>> received;
    const QString address = u"https://127.0.0.1:%1/version"_s.arg(server.serverPort());
    QVERIFY(fetching.fetch(address, [&](const auto &text) { received += text; }));
    QVERIFY(received.isEmpty()); // the window goes on meanwhile
    QTRY_COMPARE_WITH_TIMEOUT(received.size(), 1, 100'000);
    QTEST(received.first(), "received");
    QCOMPARE(server.requests > 0, trusted);
}

void tst_HttpVersionServer::otherAddressesMakeNoConnection()
{
    HttpVersionServer fetching;
    for (const QString &address :
         { u""_s, u"http://localhost/"_s, u"file:///etc/hostname"_s, u"://"_s })
        QVERIFY(!fetching.fetch(address, [](const auto &) { QFAIL("called"); }));
}

QTEST_GUILESS_MAIN(tst_HttpVersionServer)
#include "tst_HttpVersionServer.moc"
