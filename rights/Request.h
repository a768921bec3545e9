#pragma once

#include "files/ProcessStart.h"

#include <string>
#include <variant>

#include <span>
#include <sys/types.h>

// What may be asked for with root's rights, and nothing else:
//   chown OWNER:GROUP PATH DEVICE:INODE
//   immutable +i|-i PATH DEVICE:INODE
//   kill PROCESS START
// OWNER and GROUP are names, or numbers where there is no such name; "+NUMBER" is no name ever.
// OWNER, GROUP and PATH are printable ASCII, any other byte of them and "%" being written "%XX": so
// they pass whole through what asks for the password, shows them there and writes them to the log.

struct ItemName {
    std::string path; // absolute, every component a name; not "/"
    dev_t device = 0;
    ino_t inode = 0;
};

struct ChangeOwner {
    uid_t owner = 0;
    gid_t group = 0;
    ItemName item;
};

struct SetImmutable {
    bool immutable = false;
    ItemName item;
};

struct EndProcess {
    pid_t process = 0;
    ProcessStart start; // of the process that the person meant
};

using Request = std::variant<ChangeOwner, SetImmutable, EndProcess>;

// How it ended. `why`: a line for the log, "" when it is done.
enum class Status { Done = 0, Failed = 1, Refused = 2 };
struct Outcome {
    Status status = Status::Done;
    std::string why {};
};

// The words behind the program's name; or why they are none of the three.
std::variant<Request, Outcome> readRequest(std::span<char *const> words);
