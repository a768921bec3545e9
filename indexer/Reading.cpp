#include "indexer/Reading.h"

#include "files/FileName.h"

#include <chrono>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

// Answers wait for being written; not so many that they fill the memory.
constexpr qsizetype MostWaiting = 8 * 1024 * 1024; // bytes

IndexFile::Outcome stored(ForeignFiles::Outcome outcome, const ForeignContents &contents)
{
    switch (outcome) {
    case ForeignFiles::Outcome::Read:
        return contents.textWasCut ? IndexFile::Outcome::Cut : IndexFile::Outcome::Read;
    case ForeignFiles::Outcome::Nothing:
        return IndexFile::Outcome::Nothing;
    case ForeignFiles::Outcome::Failed:
    case ForeignFiles::Outcome::NoReader:
    case ForeignFiles::Outcome::Late:
        break;
    }
    return IndexFile::Outcome::Failed;
}

} // namespace

Reading::Reading(ForeignFiles &files)
    : _files(files)
    , _arrived(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , _thread([this] { run(); })
{
}

Reading::~Reading()
{
    {
        const std::lock_guard lock(_mutex);
        _stopped = true;
    }
    _changed.notify_all();
    _thread.join();
}

void Reading::ask(Question question, Turn turn)
{
    ++_asked;
    {
        const std::lock_guard lock(_mutex);
        if (turn == Turn::Next)
            _questions.push_front(std::move(question));
        else
            _questions.push_back(std::move(question));
    }
    _changed.notify_all();
}

std::optional<Reading::Answer> Reading::take()
{
    std::optional<Answer> answer;
    {
        const std::lock_guard lock(_mutex);
        if (_answers.empty()) {
            eventfd_t count = 0;
            ::eventfd_read(descriptor(), &count);
            return std::nullopt;
        }
        answer = std::move(_answers.front());
        _answers.pop_front();
        _waiting -= answer->document.text.size();
    }
    _changed.notify_all();
    --_asked;
    return answer;
}

void Reading::run()
{
    std::unique_lock lock(_mutex);
    for (;;) {
        _changed.wait(
            lock, [this] { return _stopped || (!_questions.empty() && _waiting < MostWaiting); });
        if (_stopped)
            return;
        Question question = std::move(_questions.front());
        _questions.pop_front();
        lock.unlock();

        const auto begin = std::chrono::steady_clock::now();
        ForeignContents contents;
        const ForeignFiles::Outcome outcome = _files.read(
            question.file.number(), FileName::fromBytes(question.document.name), contents);
        Answer answer { std::move(question.document), outcome };
        answer.document.outcome = stored(outcome, contents);
        answer.document.attributes += contents.attributes;
        answer.document.text = contents.text.toUtf8();
        answer.duration = std::chrono::duration_cast<std::chrono::milliseconds>(
                              std::chrono::steady_clock::now() - begin)
                              .count();
        contents = {};
        question.file.close();

        lock.lock();
        _waiting += answer.document.text.size();
        _answers.push_back(std::move(answer));
        ::eventfd_write(descriptor(), 1);
    }
}
