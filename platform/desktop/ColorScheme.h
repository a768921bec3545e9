#pragma once

#include "platform/desktop/Appearance.h"

#include <QObject>
#include <QSet>

#include <optional>

class GtkSettings;
class QDBusMessage;
class QDBusVariant;
class QVariant;

// Follows the desktop's wish for dark or light windows and for high contrast, while the program
// runs: as the portal tells it (org.freedesktop.appearance), else as the settings for GTK's
// programs do, of Xfce too. Where a platform theme brings colours of its own they stay as long as
// they are as dark as was asked for. TWINLEAF_COLOR_SCHEME=dark, =light, =dark-contrast or
// =light-contrast decides without asking.
class ColorScheme final : public QObject {
    Q_OBJECT

public:
    explicit ColorScheme(QObject *parent = nullptr);

private Q_SLOTS:
    void settingChanged(const QString &space, const QString &key, const QDBusVariant &value);
    void propertyChanged(const QString &channel, const QString &property,
                         const QDBusVariant &value);

private:
    void askDesktop();
    void ask(const QDBusMessage &question);
    void take(const QString &space, const QString &key, const QVariant &value);
    void follow();

    std::optional<Appearance> _shown; // none: a platform theme's colours
    unsigned _scheme = AppearanceSigns::NoWish; // as the portal told it
    bool _contrast = false; // so too
    QString _xfceTheme;
    QSet<QString> _changed; // keys that were told of since
    GtkSettings *_gtk = nullptr;
};
