#include "settings/UserDefaults.h"

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

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, "twinleaf.settings")

constexpr auto WriteDelay = 1s;
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

bool setAsideDamaged(const QString &file)
{
    for (int number = 1;; ++number) {
        const QString name =
            file + u".damaged"_s + (number == 1 ? QString() : QString::number(number));
        const auto failed = FileSystem::renameNoReplace(file, name);
        if (!failed) {
            qCWarning(log) << "Damaged settings are now" << FileName::shown(name);
            return true;
        }
        if (failed != std::errc::file_exists)
            return false;
    }
}

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
    , _lock(std::make_unique<QLockFile>(file + u".lock"_s))
{
    _writing.setSingleShot(true);
    _writing.setInterval(WriteDelay);
    connect(&_writing, &QTimer::timeout, this, &UserDefaults::synchronize);
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
    if (!lock()) {
        warn(u"damaged, and locked"_s);
        return;
    }
    if (const auto stored = readLocked())
        _stored = *stored;
    _lock->unlock();
}

bool UserDefaults::lock()
{
    // Opening what is no plain file might never end.
    const auto status = fileStatus(_lock->fileName(), Links::NoFollow);
    return (!status || status->kind == FileKind::Regular) && _lock->tryLock(LockTimeout);
}

std::optional<QVariantMap> UserDefaults::readLocked()
{
    QByteArray bytes;
    const auto failed = readWhole(_file, bytes);
    if (failed == std::errc::no_such_file_or_directory)
        return _stored;
    if (failed) {
        warn(QString::fromLocal8Bit(failed.message().c_str()));
        return std::nullopt;
    }
    if (auto stored = PropertyList::read(bytes))
        return stored;
    if (setAsideDamaged(resolved(_file)))
        return _stored;
    warn(u"damaged, and cannot be renamed"_s);
    return std::nullopt;
}

bool UserDefaults::synchronize()
{
    _writing.stop();
    if (_edits.isEmpty())
        return true;
    FileSystem::makePrivateFolders(PathText::parent(_file));
    if (!lock()) {
        warn(u"cannot be locked"_s);
        return false;
    }
    const bool written = writeLocked();
    _lock->unlock();
    return written;
}

bool UserDefaults::writeLocked()
{
    auto merged = readLocked();
    if (!merged)
        return false;
    for (auto edits = _edits.cbegin(); edits != _edits.cend(); ++edits) {
        for (const Edit &edit : *edits)
            apply(edit, edits.key(), *merged);
    }
    const QString target = resolved(_file);
    FileSystem::makePrivateFolders(PathText::parent(target));
    QSaveFile file(target);
    const bool open = file.open(QIODevice::WriteOnly);
    if (open) {
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        file.write(PropertyList::toXml(*merged));
    }
    if (!open || !file.commit()) {
        warn(file.errorString());
        return false;
    }
    _stored = *merged;
    _edits.clear();
    _warned = false;
    return true;
}

void UserDefaults::warn(const QString &reason)
{
    if (!_warned)
        qCWarning(log).noquote() << "Settings stay in memory:" << FileName::shown(_file) << reason;
    _warned = true;
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
    const QVariant found = value(key);
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
    const QVariant found = value(key);
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
        _writing.start();
}
