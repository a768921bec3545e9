#pragma once

#include <QHash>
#include <QIcon>
#include <QObject>

#include <functional>

class DiskQuestions;
struct FileStatus;

// What stands at paths that may lie anywhere, and its icons. Nobody waits for them: each path is
// looked at once, beside the window, when it is asked for. Main thread.
class PathIcons final : public QObject {
    Q_OBJECT

public:
    // The icon of a path at which something stands.
    using IconOf = std::function<QIcon(const QString &path, const FileStatus &status)>;

    enum class State {
        Asked,
        There,
        Gone,
        Unknown, // the disk refused to tell
    };
    struct Look {
        State state = State::Asked;
        QIcon icon {}; // of what is there
    };

    PathIcons(DiskQuestions &questions, IconOf iconOf);

    Look look(const QString &path); // asks for it when it is not known yet
    void forget(); // all is looked at anew

Q_SIGNALS:
    void arrived(const QString &path);

private:
    DiskQuestions &questions;
    const IconOf _iconOf;
    QHash<QString, Look> _looks;
};
