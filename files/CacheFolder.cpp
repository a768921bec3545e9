#include "files/CacheFolder.h"

#include "files/FileName.h"
#include "files/PathText.h"

QString cacheFolder()
{
    // An absolute path only, by the rule of those variables.
    const QString given = FileName::fromBytes(qgetenv("XDG_CACHE_HOME"));
    return PathText::normalized(
        given.startsWith(u'/')
            ? given
            : PathText::joined(PathText::homeFolder(), QStringLiteral(".cache")));
}
