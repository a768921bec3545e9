#include "platform/ProgramBeside.h"

#include <algorithm>
#include <climits>
#include <unistd.h>

namespace {

// Where this program lies, with the slash. The folder is right also when the program was replaced
// under its own name while it runs.
QByteArray ownFolder()
{
    char self[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", self, sizeof self);
    const QByteArray own(self, std::max<ssize_t>(length, 0));
    return own.left(own.lastIndexOf('/') + 1);
}

} // namespace

QByteArray programBeside(const QByteArray &name)
{
    const QByteArray own = ownFolder();
    const QByteArray helpers(TWINLEAF_HELPERS); // from CMakeLists.txt
    for (const QByteArray &folder : { helpers.startsWith('/') ? helpers : own + helpers, own }) {
        QByteArray path = folder + name;
        if (::access(path.constData(), X_OK) == 0)
            return path;
    }
    return name;
}
