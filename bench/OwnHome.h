#pragma once

#include <QTemporaryDir>

// A home of its own, so that no setting of the person's comes in or is changed; everything that a
// benchmark makes lies below it. Made before the QApplication.
struct OwnHome {
    OwnHome()
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("HOME", folder.path().toUtf8());
        for (const char *variable :
             { "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME" })
            qunsetenv(variable);
    }
    QString path(const QString &name) const { return folder.filePath(name); }
    QByteArray bytes(const QString &name) const { return path(name).toUtf8(); }

    QTemporaryDir folder;
};
