#pragma once

#include <QHash>
#include <QObject>
#include <QTimer>
#include <QVariantMap>

#include <functional>
#include <optional>
#include <thread>

// The user's settings: an XML property list, one per user, under a global domain of locale values
// that is read but never written. Values are strings, booleans, integers (qlonglong), doubles,
// QByteArray, QDateTime, QVariantList and QVariantMap. Strings and dictionary keys may hold any
// path of files/FileName. Main thread.
class UserDefaults final : public QObject {
    Q_OBJECT

public:
    // `file` need not exist. A damaged one is renamed beside itself (".damaged", numbered) and
    // never overwritten; one that cannot be written leaves the settings in memory, with a line in
    // the log.
    explicit UserDefaults(const QString &file, const QVariantMap &globalDomain = {});
    ~UserDefaults() override;

    bool contains(QLatin1StringView key) const;
    QVariant value(QLatin1StringView key) const; // invalid when absent
    // Each answers nothing when the key is absent or holds another type. A number stands for a
    // boolean (not zero) and for a string (its digits), a numeric string for an integer.
    std::optional<bool> boolean(QLatin1StringView key) const;
    std::optional<int> integer(QLatin1StringView key) const;
    std::optional<QString> string(QLatin1StringView key) const;
    std::optional<QVariantMap> dictionary(QLatin1StringView key) const;
    std::optional<QVariantList> array(QLatin1StringView key) const;
    // The same for an entry of a stored dictionary.
    static std::optional<bool> booleanOf(const QVariant &found);
    static std::optional<int> integerOf(const QVariant &found);

    // Every key of all domains, stored values over global ones.
    QVariantMap dictionaryRepresentation() const;

    void setValue(QLatin1StringView key,
                  const QVariant &value); // written soon, once for many changes
    void remove(QLatin1StringView key);
    // The value becomes what `edit` makes of the stored one (invalid: there is none). When that is
    // written, `edit` is done again, on what another program may have stored meanwhile: for records
    // that are added to a list or taken out of it. Its own result it leaves as it is. It runs on
    // any thread.
    using Edit = std::function<QVariant(const QVariant &stored)>;
    void change(QLatin1StringView key, const Edit &edit);
    bool synchronize(); // writes now, on this thread; false when it cannot

    QString filePath() const { return _file; }
    // What a person should know of the start: damaged settings were set aside, or none can be
    // kept. Localized; "" when all is well.
    QString notice() const { return _notice; }

private:
    using Edits = QHash<QString, QList<Edit>>; // done to the file as another process left it
    // What the file holds now; nothing when it could not be read or written, and why.
    struct Content {
        std::optional<QVariantMap> values;
        QString problem {};
        QString setAside {}; // the new name of a damaged file
    };
    static Content readLocked(const QString &file, const QVariantMap &stored);
    static Content write(const QString &file, const QVariantMap &stored, const Edits &edits);

    void load();
    void writeSoon();
    void writeBeside(); // on a thread of its own: the disk may take its time
    void endWrite();
    bool take(const Content &written);
    void warn(const QString &reason);

    QString _file;
    QVariantMap _global;
    QVariantMap _stored;
    Edits _edits; // since the last write began
    Edits _given; // to the write under way
    QTimer _writing;
    std::thread _writer;
    Content _written; // by the writer, read when it has ended
    bool _warned = false; // until a write succeeds
    QString _notice;
};
