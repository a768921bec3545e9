#pragma once

#include <QObject>
#include <QSet>
#include <QStringList>

// The items that a person has cut, by path, as long as the clipboard holds them: the panes show
// them pale. Main thread.
class CutItems final : public QObject {
    Q_OBJECT

public:
    bool contains(const QString &path) const { return _paths.contains(path); }
    bool isEmpty() const { return _paths.isEmpty(); }
    void set(const QStringList &paths);

Q_SIGNALS:
    void changed();

private:
    QSet<QString> _paths;
};
