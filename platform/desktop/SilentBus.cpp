#include "platform/desktop/SilentBus.h"

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds Patience { 500 };

QList<SilentBus> found; // before there are threads

// A connection to a bus that has been asked for the ways to log in, as D-Bus clients begin.
class Greeting final {
public:
    Greeting(const char *variable, const QByteArray &usual)
        : _variable(variable)
    {
        const QByteArray address =
            qEnvironmentVariableIsSet(variable) ? qgetenv(variable) : "unix:path=" + usual;
        sockaddr_un socketName { .sun_family = AF_UNIX };
        const QByteArray name = nameIn(address.split(';').first());
        if (name.isEmpty() || size_t(name.size()) >= sizeof socketName.sun_path)
            return;
        std::memcpy(socketName.sun_path, name.constData(), size_t(name.size()));
        const auto length = socklen_t(offsetof(sockaddr_un, sun_path) + size_t(name.size()));
        _socket = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        constexpr char Hello[] = "\0AUTH\r\n";
        if (connect(_socket, reinterpret_cast<const sockaddr *>(&socketName), length) != 0) {
            // One that cannot be reached fails at once; one with a full queue keeps waiting.
            _isSilent = errno == EAGAIN;
            drop();
        } else if (send(_socket, Hello, sizeof Hello - 1, MSG_NOSIGNAL) < 0) {
            drop();
        }
    }
    ~Greeting() { drop(); }
    Greeting(const Greeting &) = delete;
    Greeting &operator=(const Greeting &) = delete;

    void awaitAnswer(std::chrono::milliseconds time)
    {
        pollfd answer { _socket, POLLIN, 0 };
        if (_socket >= 0 && poll(&answer, 1, int(time.count())) == 0)
            _isSilent = true;
        if (!_isSilent)
            return;
        found.append({ _variable, qgetenv(_variable) });
        qputenv(_variable, "unix:path=/nonexistent");
    }

private:
    // Of "unix:path=NAME,guid=..." or "unix:abstract=NAME": as the kernel has it.
    static QByteArray nameIn(const QByteArray &address)
    {
        if (!address.startsWith("unix:"))
            return {};
        const auto parts = address.sliced(5).split(',');
        for (const QByteArray &part : parts) {
            if (part.startsWith("path="))
                return QByteArray::fromPercentEncoding(part.mid(5));
            if (part.startsWith("abstract="))
                return '\0' + QByteArray::fromPercentEncoding(part.mid(9));
        }
        return {};
    }
    void drop()
    {
        if (_socket >= 0)
            close(_socket);
        _socket = -1;
    }

    const char *_variable;
    int _socket = -1;
    bool _isSilent = false;
};

} // namespace

void leaveSilentBusesAlone()
{
    found.clear();
    Greeting session("DBUS_SESSION_BUS_ADDRESS", qgetenv("XDG_RUNTIME_DIR") + "/bus");
    Greeting system("DBUS_SYSTEM_BUS_ADDRESS", "/var/run/dbus/system_bus_socket");
    session.awaitAnswer(Patience);
    system.awaitAnswer(std::chrono::milliseconds(50)); // was greeted at the same time
}

const QList<SilentBus> &silentBuses()
{
    return found;
}
