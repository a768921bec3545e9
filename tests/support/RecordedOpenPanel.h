#pragma once

#include "platform/OpenPanel.h"

// Chooses what the test tells it to, or nothing.
class RecordedOpenPanel final : public OpenPanel {
public:
    std::optional<QString> chooseApplication() override { return application; }
    std::optional<QString> chooseFolder(const QString &) override { return folder; }

    std::optional<QString> application;
    std::optional<QString> folder;
};
