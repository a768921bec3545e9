#pragma once

#include <cstdlib>
#include <cstring>
#include <xcb/xcb.h>

// The X server's number of a name. Waits for the server; 0 when the connection is broken.
inline xcb_atom_t xAtom(xcb_connection_t *x, const char *name)
{
    xcb_intern_atom_reply_t *reply =
        xcb_intern_atom_reply(x, xcb_intern_atom(x, 0, uint16_t(std::strlen(name)), name), nullptr);
    const xcb_atom_t found = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    std::free(reply);
    return found;
}
