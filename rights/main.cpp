// twinleaf-rights: does with root's rights the few things that a person may ask of the main program
// and has no rights to. It is started by pkexec, which has asked for the password, and trusts
// nothing that came along.

#include "rights/Actions.h"
#include "rights/Surroundings.h"

#include <cstdlib>
#include <string>
#include <syslog.h>

namespace {

// Who asked, by the word of pkexec; of its digits only, as all that comes from outside.
std::string whoAsked()
{
    const char *uid = std::getenv("PKEXEC_UID");
    const std::string text = uid ? uid : "";
    return !text.empty() && text.size() <= 10
            && text.find_first_not_of("0123456789") == std::string::npos
        ? "uid " + text
        : "unknown";
}

// One line, whatever is in it.
std::string logged(std::span<char *const> words)
{
    constexpr size_t Longest = 1000; // bytes of a word
    std::string line;
    for (const char *word : words) {
        line += ' ';
        const std::string text = word;
        for (const char letter : text.substr(0, Longest))
            line += letter < ' ' || letter > '~' ? '?' : letter;
    }
    return line;
}

} // namespace

int main(int count, char **arguments)
{
    const std::string who = whoAsked();
    leaveSurroundings();
    // By whoever starts a program without one.
    const std::span<char *const> words =
        count > 0 ? std::span(arguments + 1, size_t(count) - 1) : std::span<char *>();
    const auto request = readRequest(words);
    const std::string line = who + " asked for:" + logged(words);
    const Outcome *refusal = std::get_if<Outcome>(&request);
    if (!refusal) {
        // Before anything is done, in case that does not come to its end.
        openlog("twinleaf-rights", LOG_PID, LOG_AUTH);
        syslog(LOG_NOTICE, "%s", line.c_str());
        closelog();
    }
    const Outcome outcome = refusal ? *refusal : perform(std::get<Request>(request));
    openlog("twinleaf-rights", LOG_PERROR | LOG_PID, LOG_AUTH);
    syslog(outcome.status == Status::Done ? LOG_NOTICE : LOG_WARNING, "%s: %s", line.c_str(),
           outcome.status == Status::Done ? "done" : outcome.why.c_str());
    closelog();
    return int(outcome.status);
}
