#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QStringList>

#include <chrono>
#include <optional>

#include <sys/types.h>

class QDBusMessage;

// One process of this program for a session: whoever has its name on the session's bus. A later
// start gives it what it was started with, and ends. Main thread.
class SingleInstance final {
public:
    // The one that has the name may be busy; but a person who waits for a window wants one.
    static constexpr std::chrono::seconds Patience { 10 };

    explicit SingleInstance(const QDBusConnection &bus,
                            std::chrono::milliseconds patience = Patience);

    struct Verdict {
        enum class Role {
            First, // it has the name now
            Alone, // there is no bus, or nobody on it to work with
            Done, // another process shows what was asked for
            Refused, // and could not, or not all
        };
        Role role;
        QStringList complaints {}; // lines for a person
    };
    // Takes the name; else has the folders (absolute paths) shown by the process that has it. One
    // that does not answer in time loses the name to this one.
    Verdict claim(const QStringList &folders, const QByteArray &token);

    // And the name that all file managers share. Where another has it, ours is the next.
    void claimFileManager();

    void giveUpNames();

private:
    std::optional<uid_t> userOf(const QString &owner) const; // nothing once it has gone
    QString ownerOf(const QString &name) const;
    QDBusMessage ask(const QString &method, const QVariantList &arguments) const;
    unsigned request(const QString &name, unsigned flags) const;
    QDBusMessage handOver(const QStringList &folders, const QByteArray &token,
                          std::chrono::milliseconds time) const;

    QDBusConnection _bus;
    const std::chrono::milliseconds _patience;
    QString _silentOwner; // from whom the name was taken
};
