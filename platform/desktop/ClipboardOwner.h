#pragma once

// Whether the program that holds the clipboard answers within a second. The toolkit would wait for
// it five times as long, with the window. Asked on a connection of its own, so any thread; only
// while this program does not hold it itself. True where there is no X11, and where nobody holds
// it.
bool clipboardOwnerAnswers();
