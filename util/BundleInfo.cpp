#include "util/BundleInfo.h"

#include "platform/FileName.h"
#include "platform/FileStatus.h"
#include "util/PathText.h"

using namespace Qt::StringLiterals;

QString BundleInfo::bundleIdentifier()
{
    return u"org.twinleaf.Twinleaf"_s;
}

QString BundleInfo::version()
{
    return QStringLiteral(TWINLEAF_VERSION); // from CMakeLists.txt
}

QString BundleInfo::getBundleIdentifier()
{
    const QString configured = FileName::fromBytes(qgetenv("XDG_CONFIG_HOME"));
    // A relative folder is to be ignored by the XDG base directory rules.
    const QString folder = configured.startsWith(u'/')
        ? configured
        : PathText::joined(PathText::homeFolder(), u".config"_s);
    return PathText::joined(folder, bundleIdentifier() + u".plist"_s);
}

bool BundleInfo::configFileExists()
{
    return exists(getBundleIdentifier());
}
