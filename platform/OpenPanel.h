#pragma once

#include <QString>

#include <optional>

// The panel in which a person picks an application or a folder. Main thread.
class OpenPanel {
public:
    virtual ~OpenPanel() = default;
    virtual std::optional<QString> chooseApplication() = 0;
    virtual std::optional<QString> chooseFolder(const QString &start) = 0;
};
