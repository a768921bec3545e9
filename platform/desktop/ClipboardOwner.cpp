#include "platform/desktop/ClipboardOwner.h"

#include "platform/desktop/XAtom.h"

#include <QDeadlineTimer>
#include <QGuiApplication>

#include <chrono>
#include <memory>
#include <poll.h>

using namespace std::chrono_literals;

namespace {

using Connection =
    std::unique_ptr<xcb_connection_t, decltype([](xcb_connection_t *x) { xcb_disconnect(x); })>;
using Event =
    std::unique_ptr<xcb_generic_event_t, decltype([](xcb_generic_event_t *e) { std::free(e); })>;

// Inter-Client Communication Conventions: whoever holds the selection names its formats, or
// refuses; the server refuses for nobody.
void askForFormats(xcb_connection_t *x)
{
    const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(x)).data;
    const xcb_window_t asker = xcb_generate_id(x);
    xcb_create_window(x, XCB_COPY_FROM_PARENT, asker, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    const xcb_atom_t formats = xAtom(x, "TARGETS");
    xcb_convert_selection(x, asker, xAtom(x, "CLIPBOARD"), formats, formats, XCB_CURRENT_TIME);
    xcb_flush(x);
}

bool hasAnswered(xcb_connection_t *x)
{
    while (const Event event { xcb_poll_for_event(x) })
        if ((event->response_type & 0x7F) == XCB_SELECTION_NOTIFY) // whoever sent it
            return true;
    return false;
}

} // namespace

bool clipboardOwnerAnswers()
{
    if (QGuiApplication::platformName() != QLatin1StringView("xcb"))
        return true;
    const Connection x(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(x.get()))
        return true; // the toolkit has a way of its own
    askForFormats(x.get());
    const QDeadlineTimer end(1s);
    while (!hasAnswered(x.get())) {
        pollfd more { xcb_get_file_descriptor(x.get()), POLLIN, 0 };
        if (xcb_connection_has_error(x.get()) || end.hasExpired()
            || poll(&more, 1, int(end.remainingTime())) == 0)
            return false;
    }
    return true;
}
