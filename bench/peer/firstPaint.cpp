// Preloaded: ends the program once its first paint has gone to the screen.

#include <QBackingStore>

#include <dlfcn.h>
#include <unistd.h>

void QBackingStore::flush(const QRegion &region, QWindow *window, const QPoint &offset)
{
    using Flush = void (*)(QBackingStore *, const QRegion &, QWindow *, const QPoint &);
    const auto original = reinterpret_cast<Flush>(
        dlsym(RTLD_NEXT, "_ZN13QBackingStore5flushERK7QRegionP7QWindowRK6QPoint"));
    original(this, region, window, offset);
    if (!region.isEmpty())
        _exit(77);
}
