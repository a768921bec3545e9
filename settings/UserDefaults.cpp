#include "settings/UserDefaults.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/FileSystem.h"
#include "files/PathText.h"
#include "settings/PropertyList.h"

#include <QFile>
#include <QLockFile>
#include <QLoggingCategory>
#include <QSaveFile>

#include <cerrno>
#include <chrono>
#include <limits>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, "twinleaf.settings")

constexpr auto WriteDelay = 1s;
constexpr auto RetryDelay = 10s;
constexpr int LockTimeout = 1000; // milliseconds; a writer needs a few
constexpr int MaximumLinks = 40; // as many as the kernel follows

// The file at the end of a chain of links, which is the one to rewrite: the link may belong to a
// collection of settings kept elsewhere. The file itself need not exist.
QString resolved(QString path)
{
    for (int i = 0; i < MaximumLinks; ++i) {
        const auto target = linkTarget(path);
        if (!target)
            break;
        path =
            target->startsWith(u'/') ? *target : PathText::joined(PathText::parent(path), *target);
    }
    return path;
}

// The error, or none and the whole content; a missing file is the error no_such_file_or_directory.
std::error_code readWhole(const QString &path, QByteArray &bytes)
{
    const int descriptor =
        ::open(FileName::toBytes(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return { errno, std::generic_category() };
    struct stat status;
    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly, QFile::AutoCloseHandle)
        || ::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return std::make_error_code(std::errc::invalid_argument);
    bytes = file.readAll();
    return file.error() == QFile::NoError ? std::error_code()
                                          : std::make_error_code(std::errc::io_error);
}

// The new name; "" when it cannot be renamed.
QString setAsideDamaged(const QString &file)
{
    for (int number = 1;; ++number) {
        QString name = file + u".damaged"_s + (number == 1 ? QString() : QString::number(number));
        const auto failed = FileSystem::renameNoReplace(file, name);
        if (!failed) {
            qCWarning(log) << "Damaged settings are now" << FileName::shown(name);
            return name;
        }
        if (failed != std::errc::file_exists)
            return {};
    }
}

// The file is read and written by one at a time, in this program and in others. Any thread.
class Lock final {
public:
    explicit Lock(const QString &file)
        : _lock(file + u".lock"_s)
    {
        // Opening what is no plain file might never end.
        const auto status = fileStatus(_lock.fileName(), Links::NoFollow);
        _isHeld = (!status || status->kind == FileKind::Regular) && _lock.tryLock(LockTimeout);
    }
    bool isHeld() const { return _isHeld; }

private:
    QLockFile _lock; // lets go when it goes
    bool _isHeld = false;
};

void apply(const UserDefaults::Edit &edit, const QString &key, QVariantMap &values)
{
    if (const QVariant value = PropertyList::normalized(edit(values.value(key))); value.isValid())
        values.insert(key, value);
    else
        values.remove(key);
}

} // namespace

UserDefaults::UserDefaults(const QString &file, const QVariantMap &globalDomain)
    : _file(file)
    , _global(globalDomain)
{
    _writing.setSingleShot(true);
    connect(&_writing, &QTimer::timeout, this, &UserDefaults::writeBeside);
    load();
}

UserDefaults::~UserDefaults()
{
    synchronize();
}

void UserDefaults::load()
{
    QByteArray bytes;
    const auto failed = readWhole(_file, bytes);
    if (failed == std::errc::no_such_file_or_directory)
        return;
    if (failed) {
        warn(QString::fromLocal8Bit(failed.message().c_str()));
        return;
    }
    if (const auto stored = PropertyList::read(bytes)) {
        _stored = *stored;
        return;
    }
    // Another program that found the same may already have written a new one.
    const Lock lock(_file);
    if (!lock.isHeld()) {
        warn(u"damaged, and locked"_s);
        return;
    }
    const Content content = readLocked(_file, {});
    if (content.values)
        _stored = *content.values;
    else
        warn(content.problem);
    if (!content.setAside.isEmpty())
        _notice =
            filled(localized("The settings were damaged and begin anew; the old file is '%@'."),
                   FileName::shown(PathText::lastComponent(content.setAside)));
}

// With what is `stored` here where there is no file.
UserDefaults::Content UserDefaults::readLocked(const QString &file, const QVariantMap &stored)
{
    QByteArray bytes;
    const auto failed = readWhole(file, bytes);
    if (failed == std::errc::no_such_file_or_directory)
        return { stored };
    if (failed)
        return { {}, QString::fromLocal8Bit(failed.message().c_str()) };
    if (auto values = PropertyList::read(bytes))
        return { values };
    if (const QString name = setAsideDamaged(resolved(file)); !name.isEmpty())
        return { stored, {}, name };
    return { {}, u"damaged, and cannot be renamed"_s };
}

UserDefaults::Content UserDefaults::write(const QString &file, const QVariantMap &stored,
                                          const Edits &edits) // any thread
{
    FileSystem::makePrivateFolders(PathText::parent(file));
    const Lock lock(file);
    if (!lock.isHeld())
        return { {}, u"cannot be locked"_s };
    Content merged = readLocked(file, stored);
    if (!merged.values)
        return merged;
    for (auto key = edits.cbegin(); key != edits.cend(); ++key) {
        for (const Edit &edit : *key)
            apply(edit, key.key(), *merged.values);
    }
    const QString target = resolved(file);
    FileSystem::makePrivateFolders(PathText::parent(target));
    QSaveFile saved(target);
    const bool open = saved.open(QIODevice::WriteOnly);
    if (open) {
        saved.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        saved.write(PropertyList::toXml(*merged.values));
    }
    if (!open || !saved.commit())
        return { {}, saved.errorString() };
    return merged;
}

bool UserDefaults::synchronize()
{
    endWrite();
    _writing.stop();
    if (_edits.isEmpty())
        return true;
    _given = std::exchange(_edits, {});
    return take(write(_file, _stored, _given));
}

void UserDefaults::writeBeside()
{
    if (_writer.joinable()) // the last one is still at it
        return writeSoon();
    if (_edits.isEmpty())
        return;
    _given = std::exchange(_edits, {});
    _writer = std::thread([this, file = _file, stored = _stored, edits = _given] {
        _written = write(file, stored, edits);
        QMetaObject::invokeMethod(this, &UserDefaults::endWrite, Qt::QueuedConnection);
    });
}

void UserDefaults::endWrite()
{
    if (!_writer.joinable())
        return;
    _writer.join();
    take(std::exchange(_written, {}));
}

bool UserDefaults::take(const Content &written)
{
    const Edits given = std::exchange(_given, {});
    if (!written.values) {
        // Tried again, before what has come since.
        for (auto edits = given.cbegin(); edits != given.cend(); ++edits)
            _edits[edits.key()] = *edits + _edits.value(edits.key());
        _writing.start(RetryDelay);
        warn(written.problem);
        return false;
    }
    _stored = *written.values;
    for (auto edits = _edits.cbegin(); edits != _edits.cend(); ++edits) {
        for (const Edit &edit : *edits)
            apply(edit, edits.key(), _stored);
    }
    _warned = false;
    return true;
}

void UserDefaults::warn(const QString &reason)
{
    if (!_warned)
        qCWarning(log).noquote() << "Settings stay in memory:" << FileName::shown(_file) << reason;
    _warned = true;
    _notice = localized("The settings cannot be stored and last until the program ends.");
}

bool UserDefaults::contains(QLatin1StringView key) const
{
    return _stored.contains(key) || _global.contains(key);
}

QVariant UserDefaults::value(QLatin1StringView key) const
{
    const auto stored = _stored.constFind(key);
    return stored != _stored.constEnd() ? *stored : _global.value(key);
}

std::optional<bool> UserDefaults::boolean(QLatin1StringView key) const
{
    return booleanOf(value(key));
}

std::optional<bool> UserDefaults::booleanOf(const QVariant &found)
{
    switch (found.typeId()) {
    case QMetaType::Bool:
        return found.toBool();
    case QMetaType::LongLong:
        return found.toLongLong() != 0;
    case QMetaType::Double:
        return found.toDouble() != 0;
    default:
        return std::nullopt;
    }
}

std::optional<int> UserDefaults::integer(QLatin1StringView key) const
{
    return integerOf(value(key));
}

std::optional<int> UserDefaults::integerOf(const QVariant &found)
{
    bool isInteger = false;
    qlonglong number = 0;
    switch (found.typeId()) {
    case QMetaType::LongLong:
    case QMetaType::QString:
        number = found.toLongLong(&isInteger);
        break;
    case QMetaType::Double:
        // Of another program; what is past the range stays out below.
        number = qlonglong(qBound(-1e15, found.toDouble(), 1e15));
        isInteger = true;
        break;
    default:
        break;
    }
    using Range = std::numeric_limits<int>;
    if (!isInteger || number < Range::min() || number > Range::max())
        return std::nullopt;
    return int(number);
}

std::optional<QString> UserDefaults::string(QLatin1StringView key) const
{
    const QVariant found = value(key);
    switch (found.typeId()) {
    case QMetaType::QString:
    case QMetaType::LongLong:
    case QMetaType::Double:
        return found.toString();
    default:
        return std::nullopt;
    }
}

std::optional<QVariantMap> UserDefaults::dictionary(QLatin1StringView key) const
{
    const QVariant found = value(key);
    return found.typeId() == QMetaType::QVariantMap ? std::optional(found.toMap()) : std::nullopt;
}

std::optional<QVariantList> UserDefaults::array(QLatin1StringView key) const
{
    const QVariant found = value(key);
    return found.typeId() == QMetaType::QVariantList ? std::optional(found.toList()) : std::nullopt;
}

QVariantMap UserDefaults::dictionaryRepresentation() const
{
    QVariantMap all = _global;
    all.insert(_stored);
    return all;
}

void UserDefaults::setValue(QLatin1StringView key, const QVariant &newValue)
{
    QVariant plain = PropertyList::normalized(newValue);
    if (!plain.isValid()) {
        remove(key);
        return;
    }
    _stored.insert(key, plain);
    _edits[key] = { [plain](const QVariant &) { return plain; } };
    writeSoon();
}

void UserDefaults::remove(QLatin1StringView key)
{
    if (_stored.remove(key) == 0)
        return;
    _edits[key] = { [](const QVariant &) { return QVariant(); } };
    writeSoon();
}

void UserDefaults::change(QLatin1StringView key, const Edit &edit)
{
    apply(edit, key, _stored);
    _edits[key].append(edit);
    writeSoon();
}

void UserDefaults::writeSoon()
{
    if (!_writing.isActive())
        _writing.start(WriteDelay);
}
