#include "rights/Request.h"

#include <charconv>
#include <climits>
#include <grp.h>
#include <optional>
#include <pwd.h>
#include <string_view>

namespace {

constexpr size_t LongestWord = 4 * PATH_MAX; // bytes

Outcome refused(const char *why)
{
    return { Status::Refused, why };
}

// Digits and nothing else, of a number that the type holds.
template <typename Number>
std::optional<Number> numberIn(std::string_view text, int base = 10)
{
    Number number = 0;
    if (text.empty() || text.front() == '-')
        return std::nullopt;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

std::optional<std::string> decoded(std::string_view word)
{
    std::string text;
    for (size_t at = 0; at < word.size(); ++at) {
        if (word[at] < ' ' || word[at] > '~')
            return std::nullopt;
        if (word[at] != '%') {
            text += word[at];
            continue;
        }
        const auto byte = numberIn<unsigned char>(word.substr(at + 1, 2), 16);
        if (!byte || *byte == 0 || at + 2 >= word.size())
            return std::nullopt;
        text += char(*byte);
        at += 2;
    }
    return text;
}

// Every component a name: nothing that leads back, and no second way to write the same path.
bool isPathOfItem(std::string_view path)
{
    if (path.size() < 2 || path.size() >= PATH_MAX || path.front() != '/')
        return false;
    while (!path.empty()) {
        path.remove_prefix(1);
        const std::string_view name = path.substr(0, path.find('/'));
        if (name.empty() || name == "." || name == ".." || name.size() > NAME_MAX)
            return false;
        path.remove_prefix(name.size());
    }
    return true;
}

std::optional<ItemName> itemIn(std::string_view path, std::string_view identity)
{
    const auto bytes = decoded(path);
    const size_t colon = identity.find(':');
    if (!bytes || !isPathOfItem(*bytes) || colon == std::string_view::npos)
        return std::nullopt;
    const auto device = numberIn<dev_t>(identity.substr(0, colon));
    const auto inode = numberIn<ino_t>(identity.substr(colon + 1));
    if (!device || !inode)
        return std::nullopt;
    return ItemName { *bytes, *device, *inode };
}

// The highest number would mean "leave it as it is".
std::optional<id_t> accountNumberIn(std::string_view text)
{
    const auto number = numberIn<id_t>(text);
    return number == id_t(-1) ? std::nullopt : number;
}

// By name first, as for every program; a number is shown where there is no name.
std::optional<uid_t> userOf(const std::string &name)
{
    if (name.starts_with('+'))
        return accountNumberIn(std::string_view(name).substr(1));
    if (const passwd *user = getpwnam(name.c_str()))
        return user->pw_uid;
    return accountNumberIn(name);
}

std::optional<gid_t> groupOf(const std::string &name)
{
    if (name.starts_with('+'))
        return accountNumberIn(std::string_view(name).substr(1));
    if (const group *found = getgrnam(name.c_str()))
        return found->gr_gid;
    return accountNumberIn(name);
}

std::variant<Request, Outcome> readChangeOwner(std::string_view owners, const ItemName &item)
{
    const auto names = decoded(owners);
    const size_t colon = names ? names->find(':') : std::string::npos;
    if (colon == std::string::npos)
        return refused("no owner and group");
    const auto owner = userOf(names->substr(0, colon));
    const auto group = groupOf(names->substr(colon + 1));
    if (!owner || !group)
        return refused("unknown owner or group");
    return Request(ChangeOwner { *owner, *group, item });
}

} // namespace

std::variant<Request, Outcome> readRequest(std::span<char *const> words)
{
    for (const std::string_view word : words)
        if (word.size() > LongestWord)
            return refused("too long");
    const std::string_view what = words.empty() ? "" : words[0];
    if (what == "kill" && words.size() == 3) {
        const auto process = numberIn<pid_t>(words[1]);
        const auto start = numberIn<unsigned long long>(words[2]);
        // The first one is the system itself.
        if (!process || *process <= 1 || !start)
            return refused("no process");
        return Request(EndProcess { *process, { *start } });
    }
    if ((what != "chown" && what != "immutable") || words.size() != 4)
        return refused("none of the commands");
    const auto item = itemIn(words[2], words[3]);
    if (!item)
        return refused("no path of an item");
    if (what == "chown")
        return readChangeOwner(words[1], *item);
    const std::string_view flag = words[1];
    if (flag != "+i" && flag != "-i")
        return refused("no flag");
    return Request(SetImmutable { flag == "+i", *item });
}
