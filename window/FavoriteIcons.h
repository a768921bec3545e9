#pragma once

#include <QHash>
#include <QIcon>
#include <QObject>
#include <QStringList>
#include <QTimer>

class FileQueries;
class Workspace;

// The icons of applications that may lie anywhere. Nobody waits for them: until the disk has
// answered, an application has the general one. Main thread.
class FavoriteIcons final : public QObject {
    Q_OBJECT

public:
    FavoriteIcons(const Workspace &workspace, const FileQueries &queries);

    QIcon icon(const QString &application); // asks for it when it is not known yet
    void forget(); // they are asked for anew

Q_SIGNALS:
    void arrived(const QString &application);

private:
    void askForNext();

    const Workspace &workspace;
    const FileQueries &queries;
    QHash<QString, QIcon> _icons;
    QStringList _wanted; // the last first: it is what a person looks at
    QTimer _asking;
};
