#pragma once

#include <QByteArray>
#include <QList>

#include <sys/mman.h>
#include <unistd.h>

// What a process writes down here is known after it was killed. Texts hold no NUL.
class Ledger final {
public:
    enum Kind : char {
        Written = 'w', // by another program: not to be lost
        Gone = 'x', // by another program's own doing
        Agreed = 'a', // to be lost, by the person
        Withdrawn = 'r', // what was agreed, when the item then failed
        Told = 't', // to the person
        Act = 'o', // for the message of a failure
    };

    Ledger()
        : _file(memfd_create("ledger", MFD_CLOEXEC))
    {
    }
    ~Ledger() { close(_file); }
    Ledger(const Ledger &) = delete;
    Ledger &operator=(const Ledger &) = delete;

    void note(Kind kind, const QByteArray &text) const
    {
        const QByteArray line = char(kind) + text + '\0';
        if (write(_file, line.constData(), size_t(line.size())) != line.size())
            qFatal("The ledger cannot be written");
    }
    QList<std::pair<Kind, QByteArray>> entries() const
    {
        QByteArray all(lseek(_file, 0, SEEK_END), '\0');
        if (pread(_file, all.data(), size_t(all.size()), 0) != all.size())
            qFatal("The ledger cannot be read");
        QList<std::pair<Kind, QByteArray>> entries;
        for (const QByteArray &line : all.split('\0'))
            if (!line.isEmpty())
                entries.append({ Kind(line[0]), line.mid(1) });
        return entries;
    }
    void clear() const
    {
        if (ftruncate(_file, 0) != 0 || lseek(_file, 0, SEEK_SET) != 0)
            qFatal("The ledger cannot be cleared");
    }

private:
    int _file;
};
