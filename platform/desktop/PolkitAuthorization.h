#pragma once

#include "platform/AuthorizationServices.h"

// The rights as the desktop's polkit grants them.
class PolkitAuthorization final : public AuthorizationServices {
public:
    bool holdsRights(const QStringList &commands) override;
    bool askForRights(const QStringList &commands) override;
    void giveUpRights() override;
    int execute(const QString &command, const QStringList &arguments,
                const std::optional<FileIdentity> &item) override;
};
