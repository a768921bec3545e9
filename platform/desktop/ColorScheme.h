#pragma once

#include <QObject>

class QDBusVariant;

// Follows the desktop's wish for a dark or light window where no platform theme does so already.
// TWINLEAF_COLOR_SCHEME=dark or =light decides without asking.
class ColorScheme final : public QObject {
    Q_OBJECT

public:
    explicit ColorScheme(QObject *parent = nullptr);

private Q_SLOTS:
    void settingChanged(const QString &space, const QString &key, const QDBusVariant &value);

private:
    void askPortal();
    void follow(const QVariant &value);
};
