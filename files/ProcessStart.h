#pragma once

#include "files/Descriptor.h"

#include <fcntl.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>

// When a process was started, in the kernel's ticks: with its number that names it for good, while
// the number alone goes to another one after its end.
struct ProcessStart {
    unsigned long long ticks = 0;
    friend bool operator==(const ProcessStart &, const ProcessStart &) = default;
};

// Nothing when there is no such process, or it is not to be seen. Any thread. Without the toolkit:
// what has root's rights asks, too.
inline std::optional<ProcessStart> startOfProcess(pid_t process)
{
    constexpr int Place = 20; // of the words behind the name, the first being 1
    const std::string path = "/proc/" + std::to_string(process) + "/stat";
    const Descriptor stat(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    char text[4096];
    const ssize_t size = stat.isOpen() ? ::read(stat.number(), text, sizeof text) : -1;
    // The name may hold blanks and brackets.
    std::string_view rest(text, size > 0 ? size_t(size) : 0);
    rest.remove_prefix(std::min(rest.size(), rest.rfind(')') + 1));
    for (int blanks = 0; blanks < Place; ++blanks) {
        const size_t blank = rest.find(' ');
        if (blank == std::string_view::npos)
            return std::nullopt;
        rest.remove_prefix(blank + 1);
    }
    ProcessStart start;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), start.ticks);
    return error == std::errc() ? std::optional(start) : std::nullopt;
}
