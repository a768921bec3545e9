#pragma once

#include <QByteArray>

#include <functional>

class QVariant;
class QWidget;

// The word by which the desktop knows that a person asked for this start or this window, so that it
// may take the keyboard: on X11 the id of the startup notification, on Wayland that of
// xdg-activation. Main thread.
namespace StartupToken {

// What this process was started with. The toolkit takes the X11 one for the first window; the
// other is taken out of the environment, which programs started from here inherit. Before the
// application is made.
QByteArray takeFromEnvironment();

// As it came from outside; "" for what is no such word.
QByteArray checked(const QVariant &word);

// Raises the window, with what stands over it, and asks for the keyboard. On X11 that also tells
// the desktop that the start is over.
void bringForward(QWidget &window, const QByteArray &token);

// The same for whoever does not know the window; false when there is none any more.
using BringForward = std::function<bool(const QByteArray &token)>;

} // namespace StartupToken
