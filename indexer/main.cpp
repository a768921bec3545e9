// twinleaf-index: writes the index of the home folder, as long as whoever started it holds its
// standard input open.

#include "indexer/Indexer.h"
#include "indexer/Surroundings.h"
#include "platform/ReaderProcess.h"
#include "search/WalkRules.h"
#include "settings/BundleInfo.h"

#include <clocale>
#include <csignal>
#include <unistd.h>

int main()
{
    // Names in the log pass as the bytes they are.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    std::signal(SIGPIPE, SIG_IGN);
    Surroundings::takeLowestPriority();
    Surroundings::raiseFileLimit();
    Surroundings::returnMemory();
    ReaderProcess reader;
    const auto leftOut = [] { return WalkRules::leftOutIn(BundleInfo::getBundleIdentifier()); };
    Indexer indexer(reader, leftOut, {});
    Surroundings::endWithInput([&] {
        indexer.stop();
        reader.giveUp();
    });
    indexer.run();
    // The thread that watches the input still has both.
    ::_exit(0);
}
