#include "platform/desktop/SilentBus.h"

#include "platform/desktop/InstalledApplications.h"
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
            QCOMPARE(silentBuses().size(), listens && !answers ? 1 : 0);
            if (!listens || answers)
                continue;
            // The applications that are started may find it awake.
            folder.write(u"opener"_s,
                         "#!/bin/sh\necho -n \"$DBUS_SESSION_BUS_ADDRESS $1\" > \"$0.saw\"\n");
            folder.shell(
                u"chmod +x opener; applications=~/.local/share/applications; "
                "mkdir -p \"$applications\" ~/.config; printf "
                "'[Desktop Entry]\\nType=Application\\nName=x\\nExec=\"%s\" %%u\\n' "
                "\"$PWD/opener\" "
                "> \"$applications/opener.desktop\"; "
                "printf '[Default Applications]\\nx-scheme-handler/test=opener.desktop\\n' "
                "> ~/.config/mimeapps.list"_s);
            QVERIFY(InstalledApplications::openAddress(u"test:page"_s));
            QTRY_COMPARE(folder.read(u"opener.saw"_s), address + " test:page");
            QVERIFY(!InstalledApplications::openAddress(u"unknown:page"_s));
        }
    }
};

QTEST_GUILESS_MAIN(tst_SilentBus)
#include "tst_SilentBus.moc"
