#pragma once

#include <cerrno>
#include <type_traits>
#include <vector>

// Looks an account up by one of the system's calls (getpwnam_r and its like), which tell when their
// buffer is too small, and hands what was found to `use`: its texts live no longer. Directory
// services answer, too, so it may take long. Any thread.
template <typename Entry, typename Key, typename Use>
void lookUpAccount(int (*lookUp)(Key, Entry *, char *, size_t, Entry **),
                   std::type_identity_t<Key> key, Use use)
{
    constexpr size_t LargestEntry = 1 << 20; // bytes; a group may have thousands of members
    Entry entry {};
    Entry *found = nullptr;
    for (std::vector<char> buffer(1024); buffer.size() <= LargestEntry;
         buffer.resize(buffer.size() * 4))
        if (lookUp(key, &entry, buffer.data(), buffer.size(), &found) != ERANGE) {
            if (found)
                use(*found);
            return;
        }
}
