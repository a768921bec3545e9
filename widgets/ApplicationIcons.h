#pragma once

#include <QHash>
#include <QIcon>
#include <QObject>

class DiskQuestions;
class Workspace;

// The icons of applications that may lie anywhere. Nobody waits for them: until the disk has
// answered, and where nothing stands, an application has the general one. Main thread.
class ApplicationIcons final : public QObject {
    Q_OBJECT

public:
    ApplicationIcons(const Workspace &workspace, DiskQuestions &questions);

    QIcon icon(const QString &application); // asks for it when it is not known yet
    void forget(); // they are asked for anew

Q_SIGNALS:
    void arrived(const QString &application);

private:
    const Workspace &workspace;
    DiskQuestions &questions;
    QHash<QString, QIcon> _icons;
};
