#include "app/DesktopServices.h"

#include "settings/BundleInfo.h"
#include "settings/LocaleDefaults.h"

DesktopServices::DesktopServices()
    : _defaults(BundleInfo::getBundleIdentifier(), localeDefaults())
{
}

Services DesktopServices::services()
{
    return { _defaults,  _openDialogs,   _alerts,        _openPanel,     _programs,
             _workspace, _versionServer, _authorization, _metadataIndex, &_pictureReader };
}

void DesktopServices::windowStands()
{
    _metadataIndex.keepUp();
}

bool DesktopServices::end()
{
    return _metadataIndex.end();
}

void DesktopServices::setMainWindow(QWidget *window)
{
    _alerts.setParent(window);
    _openPanel.setParent(window);
    _authorization.setParent(window);
}
