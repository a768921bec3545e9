#pragma once

#include "files/Descriptor.h"
#include "platform/ReaderWords.h"

#include <chrono>
#include <optional>
#include <vector>

#include <sys/types.h>

// The running program twinleaf-reader: asks it one question at a time, ends it when an answer takes
// too long, and starts another when it is gone. It lies beside the own program, else where
// programs lie.
class ReaderProcess final : public ForeignFiles {
public:
    // How long a file may take, the start of the reader not counted, as long as the reader gets on:
    // on a busy machine it may take longer, up to what it may use of the processor
    // (reader/Confinement).
    static constexpr std::chrono::seconds UsualLimit { 60 };

    explicit ReaderProcess(std::chrono::milliseconds limit = UsualLimit);
    ~ReaderProcess() override; // ends it, without waiting for a disk that it waits for
    ReaderProcess(const ReaderProcess &) = delete;
    ReaderProcess &operator=(const ReaderProcess &) = delete;

    // The descriptor has to be open for reading only: the reader gets it as it is. It stays the
    // caller's, its position may have changed. Waits for the disk.
    Outcome read(int descriptor, const QString &name, ForeignContents &contents) override;
    Outcome picture(int descriptor, const QSize &bound, QImage &image, QSize &size) override;

    // The question that is being asked and all that follow are answered NoReader, at once. Any
    // thread.
    void giveUp();

    std::optional<pid_t> process() const; // the one that waits for questions, if there is one

private:
    enum class Come { Packet, End, Late };

    Outcome ask(ReaderWords::Question question, int descriptor, const QByteArray &name,
                ReaderWords::Answer &answer);
    bool start();
    bool spawn(int socket, int life);
    bool send(const ReaderWords::Question &question, int descriptor, const QByteArray &name);
    Come receive(void *packet, size_t size, std::chrono::milliseconds limit);
    Come receiveAtWork(void *packet, size_t size);
    bool wasEndedByAnother();
    bool take(qint64 at, void *bytes, qint64 size) const; // out of the shared memory
    void freeMemory(qint64 size) const;
    void end();
    void collectAbandoned();
    bool isGivenUp() const;

    const std::chrono::milliseconds _limit;
    Descriptor _givenUp; // readable once it is
    Descriptor _memory;
    Descriptor _socket;
    Descriptor _life; // the writing end
    pid_t _process = -1;
    std::vector<pid_t> _abandoned; // killed, waiting for a disk that does not answer
    quint32 _number = 0; // of the last question
    int _asked = 0; // questions to this process
    quint32 _closed = ~0U; // that less than all is closed was said once
    std::optional<std::chrono::steady_clock::time_point> _failed; // when it could not be started
};
