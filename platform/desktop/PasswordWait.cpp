#include "platform/desktop/PasswordWait.h"

#include "base/Localized.h"
#include "platform/OpenDialogs.h"
#include "widgets/Icons.h"
#include "widgets/Sheet.h"

#include <QEventLoop>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

#include <chrono>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds Moment { 300 }; // most take less, rights being held

class WaitingSheet final : public Sheet {
public:
    WaitingSheet(QWidget *below, PasswordWait::For what)
        : Sheet(below)
        , _canGiveUp(what == PasswordWait::For::Password)
    {
        const QString text = _canGiveUp ? localized("Waiting for the administrator's password...")
                                        : localized("Changing...");
        setAccessibleName(text);
        // The keyboard is for the password.
        setAttribute(Qt::WA_ShowWithoutActivating);
        setPicture(themedIcon(u"dialog-information"_s),
                   style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this));
        rows().addStretch();
        addText(text, TextStyle::Headline);
        rows().addStretch();
        if (_canGiveUp)
            connect(addQuietButton(localized("Cancel"), *this), &QPushButton::clicked, this,
                    &QDialog::reject);
    }

    // What has root's rights heeds nobody of ours.
    void reject() override
    {
        if (_canGiveUp)
            Sheet::reject();
    }

private:
    const bool _canGiveUp;
};

} // namespace

PasswordWait::PasswordWait(QWidget *below, OpenDialogs &openDialogs, For what)
    : _below(below)
    , _openDialogs(openDialogs)
    , _what(what)
{
}

bool PasswordWait::wait()
{
    const OpenDialogs::Guard guard(_openDialogs);
    if (!_ended) {
        QEventLoop moment;
        const QScopedValueRollback running(_moment, &moment);
        QTimer::singleShot(Moment, &moment, &QEventLoop::quit);
        moment.exec(QEventLoop::ExcludeUserInputEvents);
    }
    if (!_ended) {
        _sheet = new WaitingSheet(Sheet::topmost(_below), _what);
        _sheet->run();
        delete _sheet; // unless it went with the window below
    }
    return _ended;
}

void PasswordWait::end()
{
    _ended = true;
    if (_moment)
        _moment->quit();
    if (_sheet)
        _sheet->accept();
}
