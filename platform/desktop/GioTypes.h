#pragma once

#include "files/FileName.h"

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <memory>

// What GIO hands out, owned; and what it tells, in the terms of this program.

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
struct Free {
    void operator()(gpointer memory) const { g_free(memory); }
};
template <typename Object>
using Owned = std::unique_ptr<Object, Unref>;
using OwnedText = std::unique_ptr<char, Free>;

// The path of an application's desktop entry; empty where it has none.
inline QString pathOf(GAppInfo *info)
{
    const char *path = G_IS_DESKTOP_APP_INFO(info)
        ? g_desktop_app_info_get_filename(G_DESKTOP_APP_INFO(info))
        : nullptr;
    return path ? FileName::fromBytes(path) : QString();
}

// Takes an error over: its words for a person; "" where there is none.
inline QString wordsOf(GError *error)
{
    QString words = error ? FileName::shown(FileName::fromBytes(error->message)) : QString();
    g_clear_error(&error);
    return words;
}
