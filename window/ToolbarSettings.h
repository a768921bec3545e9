#pragma once

#include <QStringList>

class UserDefaults;

enum class ToolbarDisplay { IconAndLabel = 1, IconOnly = 2 }; // as stored

// The toolbar as the person arranged it, in the settings, which are the only copy. What is stored
// in another type counts as absent, and stays until the person changes that very thing. Main
// thread.
class ToolbarSettings {
public:
    explicit ToolbarSettings(UserDefaults &settings)
        : defaults(settings)
    {
    }

    // Its items in order, with those that nobody knows now: they may be another version's, or an
    // application that comes back. Only separators and spaces stand there more than once.
    QStringList identifiers() const;
    ToolbarDisplay display() const;
    bool isShown() const;

    void setIdentifiers(const QStringList &identifiers);
    void setDisplay(ToolbarDisplay display);
    void setShown(bool shown);
    void restoreDefaults(); // of the items and their display

private:
    UserDefaults &defaults;
};
