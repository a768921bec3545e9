#pragma once

#include "platform/desktop/Appearance.h"
#include "platform/desktop/GioTypes.h"

#include <QFileSystemWatcher>
#include <QObject>

// What a person has set for the looks of GTK's programs: in the settings of the desktop
// (org.gnome.desktop.interface and its kin), and in ~/.config/gtk-3.0/settings.ini where a desktop
// has no others. Main thread, with an event loop that serves GLib.
class GtkSettings final : public QObject {
    Q_OBJECT

public:
    explicit GtkSettings(QObject *parent = nullptr);
    ~GtkSettings() override;

    AppearanceSigns signs() const;

Q_SIGNALS:
    void changed();

private:
    Owned<GSettings> watched(const char *schema);
    void watchFile();

    Owned<GSettings> _interface;
    Owned<GSettings> _accessibility;
    QFileSystemWatcher _files;
};
