#pragma once

#include <QObject>

// Counts the alerts and sheets that wait for an answer. While one is open no listing is replaced,
// so that a person answers about the rows he sees. Main thread.
class OpenDialogs final : public QObject {
    Q_OBJECT

public:
    bool anyOpen() const { return _open > 0; }

    // Lives while one question is on the screen.
    class Guard {
    public:
        explicit Guard(OpenDialogs &openDialogs)
            : _openDialogs(openDialogs)
        {
            ++_openDialogs._open;
        }
        ~Guard()
        {
            if (--_openDialogs._open == 0)
                Q_EMIT _openDialogs.allClosed();
        }
        Guard(const Guard &) = delete;
        Guard &operator=(const Guard &) = delete;

    private:
        OpenDialogs &_openDialogs;
    };

Q_SIGNALS:
    void allClosed();

private:
    int _open = 0;
};
