#include "search/WalkRules.h"

#include "files/Descriptor.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/PathText.h"
#include "files/SmallFile.h"
#include "search/IndexFile.h"
#include "settings/PropertyList.h"
#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView Signature { "Signature: 8a477f597d28d172789f06886806bc55" };

constexpr qint64 LargestSettings = 64 * 1024 * 1024; // bytes

QString inHome(const QString &entry)
{
    if (entry.startsWith(u'/'))
        return PathText::normalized(entry);
    if (entry.startsWith(u"~/"))
        return PathText::fromTyped(entry);
    return PathText::normalized(IndexFile::homePath() + u'/' + entry);
}

QStringList texts(const QVariant &setting)
{
    QStringList texts;
    for (const QVariant &entry : setting.toList()) {
        if (entry.typeId() == QMetaType::QString)
            texts.append(entry.toString());
    }
    return texts;
}

} // namespace

WalkRules::WalkRules(const QStringList &leftOut)
{
    _paths.append(FileName::toBytes(IndexFile::folder()));
    for (const QString &entry : leftOut) {
        if (entry.contains(u'/'))
            _paths.append(FileName::toBytes(inHome(entry)));
        else if (!entry.isEmpty())
            _names.insert(FileName::toBytes(entry));
    }
}

QStringList WalkRules::leftOutIn(const UserDefaults &defaults)
{
    return texts(defaults.value(Settings::SearchLeftOutFolders));
}

QStringList WalkRules::leftOutIn(const QString &settingsFile)
{
    return texts(PropertyList::read(startOfFile(settingsFile, LargestSettings))
                     .value_or(QVariantMap {})
                     .value(Settings::SearchLeftOutFolders));
}

bool WalkRules::mayEnter(QByteArrayView parent, QByteArrayView name) const
{
    if (name.startsWith('.'))
        return false;
    if (!_names.isEmpty() && _names.contains(QByteArray::fromRawData(name.data(), name.size())))
        return false;
    return std::ranges::none_of(_paths, [parent, name](const QByteArray &path) {
        return path.size() == parent.size() + 1 + name.size() && path.endsWith(name)
            && path[parent.size()] == '/' && path.startsWith(parent);
    });
}

void WalkRules::setHome(int folder)
{
    if (const auto status = statusOf(folder))
        _device = status->identity.device;
}

bool WalkRules::isOnHomeDisk(int folder) const
{
    const auto status = statusOf(folder);
    return status && isOnHomeDisk(status->identity.device, status->mountPoint);
}

bool WalkRules::isMarkedAsCache(int folder)
{
    const Descriptor mark(::openat(folder, CacheMark.data(),
                                   O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
    struct stat status { };
    char start[Signature.size()];
    return mark.isOpen() && ::fstat(mark.number(), &status) == 0 && S_ISREG(status.st_mode)
        && ::pread(mark.number(), start, sizeof start, 0) == ssize_t(sizeof start)
        && QByteArrayView(start, sizeof start) == Signature;
}
