#include "platform/desktop/PolkitAuthorization.h"

bool PolkitAuthorization::holdsRights(const QStringList &)
{
    return false;
}

bool PolkitAuthorization::askForRights(const QStringList &)
{
    return false;
}

void PolkitAuthorization::giveUpRights() { }

int PolkitAuthorization::execute(const QString &, const QStringList &,
                                 const std::optional<FileIdentity> &)
{
    return 127;
}
