#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

// The folder under which the desktop mounts volumes.
QString volumesFolder();

// The mount points of the volumes a person sees, "/" first, each once. Any thread.
QStringList localVolumePoints();

// Tells when a volume comes or goes. The kernel reports every change of the mount table, and one
// plugged-in disk makes several; they are looked at together.
class MountWatch final : public QObject {
    Q_OBJECT

public:
    explicit MountWatch(QObject *parent = nullptr);
    ~MountWatch() override;

Q_SIGNALS:
    void volumeDidMount();
    void volumeDidUnmount();

private:
    void compare();

    int _table = -1;
    QTimer _pause;
    QStringList _points;
};
