#pragma once

#include "platform/ReaderWords.h"
#include "reader/FileBytes.h"

// Takes questions off the socket and puts the answers into the memory, until the socket ends.
class Questions final {
public:
    Questions(int socket, char *memory); // ReaderWords::MemorySize large

    void answerAll(quint32 closed); // says first what is closed

private:
    bool take(ReaderWords::Question &question, QByteArray &name, Descriptor &file) const;
    bool send(const void *packet, size_t size) const;
    ReaderWords::Answer answer(const ReaderWords::Question &question, FileBytes &file,
                               const QByteArray &name) const;

    int _socket;
    char *_memory;
};
