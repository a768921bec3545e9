#pragma once

#include "files/Waiting.h"

// The same as Waiting::forAnswer for a job that writes. It is called with what says whether it was
// given up meanwhile, and looks at that right before each write: then nothing is written any more
// behind the back of who was told that nothing was.
template <typename Job>
auto waitForWrite(Waiting &waiting, const QString &path, Job job)
{
    const auto givenUp = std::make_shared<std::atomic<bool>>(false); // set by who waits
    const auto answer = waiting.forAnswer(
        path, [givenUp, job = std::move(job)]() mutable { return job(std::as_const(*givenUp)); });
    *givenUp = !answer;
    return answer;
}
