#pragma once

#include "platform/VersionServer.h"

// Answers at once what the test tells it to.
struct ScriptedVersionServer final : VersionServer {
    bool fetch(const QString &,
               const std::function<void(std::optional<QByteArray>)> &received) override
    {
        if (connects)
            received(answer);
        return connects;
    }
    bool connects = true;
    std::optional<QByteArray> answer;
};
