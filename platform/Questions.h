#pragma once

#include <QObject>

// Counts the alerts and sheets that wait for an answer. While one is open no listing is replaced,
// so that a person answers about the rows he sees. Main thread.
class Questions final : public QObject {
    Q_OBJECT

public:
    bool anyOpen() const { return _open > 0; }

    // Lives while one question is on the screen.
    class Guard {
    public:
        explicit Guard(Questions &questions)
            : _questions(questions)
        {
            ++_questions._open;
        }
        ~Guard()
        {
            if (--_questions._open == 0)
                Q_EMIT _questions.allAnswered();
        }
        Guard(const Guard &) = delete;
        Guard &operator=(const Guard &) = delete;

    private:
        Questions &_questions;
    };

Q_SIGNALS:
    void allAnswered();

private:
    int _open = 0;
};
