#include "settings/BundleInfo.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/PathText.h"

using namespace Qt::StringLiterals;

QString BundleInfo::bundleIdentifier()
{
    return u"org.twinleaf.Twinleaf"_s;
}

QString BundleInfo::version()
{
    return QStringLiteral(TWINLEAF_VERSION); // from CMakeLists.txt
}

QString BundleInfo::name()
{
    return u"Twinleaf"_s;
}

QString BundleInfo::copyright()
{
    return u"\u00A9 2026 "_s + localized("The makers of Twinleaf");
}

QString BundleInfo::versionLine()
{
    return localized("Version") + u' ' + version() + u" ("_s + version() + u')';
}

QString BundleInfo::versionFileAddress()
{
    return QStringLiteral(TWINLEAF_VERSION_ADDRESS);
}

QString BundleInfo::downloadAddress()
{
    return QStringLiteral(TWINLEAF_DOWNLOAD_ADDRESS);
}

QString BundleInfo::donationAddress()
{
    return QStringLiteral(TWINLEAF_DONATION_ADDRESS);
}

QString BundleInfo::webAddress()
{
    return QStringLiteral(TWINLEAF_WEB_ADDRESS);
}

QString BundleInfo::mailAddress()
{
    return QStringLiteral(TWINLEAF_MAIL_ADDRESS);
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
