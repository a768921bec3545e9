#pragma once

#include <QPointer>
#include <QWidget>

class OpenDialogs;
class QEventLoop;
class Sheet;

// A wait, with the window alive, while the desktop asks a person for a password elsewhere, or what
// has the rights does its work. What takes longer than a moment is said in a sheet, where the
// person can give up the password; until then, and over that, no click gets through to what is to
// come after it. One wait each. Main thread.
class PasswordWait final {
public:
    // `below`: over which the sheet stands; there may be none.
    enum class For { Password, Work };
    PasswordWait(QWidget *below, OpenDialogs &openDialogs, For what = For::Password);

    // Returns when it was ended, or else was given up, which the end of the program does, too.
    bool wait();
    void end();

private:
    QPointer<QWidget> _below;
    OpenDialogs &_openDialogs;
    const For _what;
    bool _ended = false;
    QEventLoop *_moment = nullptr; // while it runs
    QPointer<Sheet> _sheet;
};
