#pragma once

#include <QByteArray>
#include <QList>
#include <QVarLengthArray>

// Words as the system takes those of a program: an argument vector, or an environment. Any thread.
class ProgramWords final {
public:
    explicit ProgramWords(QList<QByteArray> words)
        : _bytes(std::move(words))
    {
        for (QByteArray &word : _bytes)
            _pointers.append(word.data());
        _pointers.append(nullptr);
    }
    ProgramWords(const ProgramWords &) = delete;
    ProgramWords &operator=(const ProgramWords &) = delete;

    char *const *data() const { return _pointers.data(); }

private:
    QList<QByteArray> _bytes;
    QVarLengthArray<char *, 8> _pointers;
};
