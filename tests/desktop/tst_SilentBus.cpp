#include "platform/desktop/SilentBus.h"

#include "tests/support/TestFolder.h"

#include <QLocalServer>

#include <poll.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

class tst_SilentBus : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Only what takes a connection and then says nothing is left alone; the rest fails by itself.
    void whichBusIsUsed()
    {
        for (const auto &[listens, answers] :
             { std::pair(true, true), { true, false }, { false, false } }) {
            const TestFolder folder;
            const QString name = folder.path(u"bus"_s);
            QLocalServer server;
            if (listens)
                QVERIFY2(server.listen(name), qPrintable(server.errorString()));
            const int socket = int(server.socketDescriptor());
            std::thread bus([&, answers = answers] {
                constexpr int LongestWait = 10'000; // milliseconds
                pollfd knock { answers ? socket : -1, POLLIN, 0 };
                const int guest = poll(&knock, 1, answers ? LongestWait : 0) == 1
                    ? accept(socket, nullptr, nullptr)
                    : -1;
                char greeting[7];
                if (guest >= 0 && recv(guest, greeting, sizeof greeting, MSG_WAITALL) == 7)
                    send(guest, "REJECTED\r\n", 10, 0);
                close(guest);
            });
            const QByteArray address = "unix:path=" + name.toUtf8() + ",guid=1";
            qputenv("DBUS_SESSION_BUS_ADDRESS", address);
            qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + folder.path(u"none"_s).toUtf8());
            leaveSilentBusesAlone();
            bus.join();
            QCOMPARE(qgetenv("DBUS_SESSION_BUS_ADDRESS") == address, !listens || answers);
            QVERIFY(qgetenv("DBUS_SYSTEM_BUS_ADDRESS").endsWith("/none"));
            // The programs that are started may find it awake.
            QCOMPARE(silentBuses().size(), listens && !answers ? 1 : 0);
            for (const SilentBus &silent : silentBuses())
                QCOMPARE(silent.address, address);
        }
    }
};

QTEST_GUILESS_MAIN(tst_SilentBus)
#include "tst_SilentBus.moc"
