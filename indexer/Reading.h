#pragma once

#include "files/Descriptor.h"
#include "platform/ForeignFiles.h"
#include "search/DocumentWriter.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

// Has files read on a thread of its own, so that one that takes its time holds up nothing but those
// behind it.
class Reading final {
public:
    explicit Reading(ForeignFiles &files);
    ~Reading(); // waits for the file that is read
    Reading(const Reading &) = delete;
    Reading &operator=(const Reading &) = delete;

    struct Question {
        DocumentWriter::Document document; // what is known of it so far
        Descriptor file;
    };
    struct Answer {
        DocumentWriter::Document document; // with what is in it
        ForeignFiles::Outcome outcome = ForeignFiles::Outcome::NoReader;
        qint64 duration = 0; // milliseconds
    };
    enum class Turn { Last, Next };

    bool hasRoom() const { return _asked < MostAsked; }
    void ask(Question question, Turn turn);
    std::optional<Answer> take();
    bool isIdle() const { return _asked == 0; } // all that was asked was taken
    int descriptor() const { return _arrived.number(); } // readable when there is an answer

private:
    static constexpr int MostAsked = 4;

    void run(); // the thread

    ForeignFiles &_files;
    int _asked = 0; // questions whose answers were not taken
    Descriptor _arrived; // eventfd
    std::mutex _mutex; // for all below
    std::condition_variable _changed;
    std::deque<Question> _questions;
    std::deque<Answer> _answers;
    qsizetype _waiting = 0; // bytes of text in the answers
    bool _stopped = false;
    std::thread _thread;
};
