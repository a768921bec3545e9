#include "widgets/AlertSheets.h"

#include "base/MainThread.h"
#include "platform/OpenDialogs.h"
#include "widgets/Icons.h"
#include "widgets/Sheet.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include <chrono>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds Pause { 500 }; // longer than between the letters of a word

class AlertSheet final : public Sheet {
public:
    AlertSheet(const Alert &alert, QWidget *below)
        : Sheet(below)
        , _answer(alert.cancel)
    {
        setWindowTitle(alert.title);
        setAccessibleName(alert.title);
        setAccessibleDescription(alert.text);
        const bool critical = alert.style == Alert::Style::Critical;
        setPicture(themedIcon(critical                                   ? u"dialog-error"_s
                                  : alert.style == Alert::Style::Warning ? u"dialog-warning"_s
                                                                         : u"dialog-information"_s),
                   style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this));
        rows().addStretch(); // one line stands beside the middle of the picture
        addText(alert.text, TextStyle::Headline);
        if (!alert.details.isEmpty())
            addText(alert.details);
        rows().addStretch();
        for (const Alert::Button &button : alert.buttons)
            connect(addButton(button.text), &QPushButton::clicked, this,
                    [this, answer = button.answer] {
                        _answer = answer;
                        accept();
                    });
    }

    Alert::Answer answer() const { return _answer; }

protected:
    void showEvent(QShowEvent *event) override
    {
        _sinceLastKey.start();
        Sheet::showEvent(event);
    }

    // The letter of a button alone presses it: there is no field here that it could be meant for.
    // But a question may come up unasked, while somebody types on for what was there before.
    void keyPressEvent(QKeyEvent *event) override
    {
        const bool isMeant = _sinceLastKey.hasExpired(Pause.count()) && !event->isAutoRepeat();
        _sinceLastKey.start();
        if (event->modifiers() & ~Qt::KeyboardModifiers(Qt::ShiftModifier)
            || !QChar::isLetterOrNumber(char32_t(event->key())))
            return Sheet::keyPressEvent(event);
        const auto buttons = findChildren<QPushButton *>();
        for (QPushButton *button : buttons)
            if (isMeant && button->shortcut() == QKeySequence(Qt::ALT | Qt::Key(event->key())))
                return button->click();
    }

private:
    Alert::Answer _answer;
    QElapsedTimer _sinceLastKey;
};

} // namespace

Alert::Answer AlertSheets::ask(const Alert &alert)
{
    Alert::Answer answer = alert.cancel;
    onMainThread([&] { answer = show(alert); });
    return answer;
}

void AlertSheets::setSilent(bool silent)
{
    _silent = silent;
    if (!silent)
        return;
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        if (auto *alert = dynamic_cast<AlertSheet *>(window))
            alert->reject();
}

Alert::Answer AlertSheets::show(const Alert &alert)
{
    if (_silent)
        return alert.cancel;
    const OpenDialogs::Guard guard(_openDialogs);
    const QPointer<AlertSheet> sheet = new AlertSheet(alert, Sheet::topmost(_parent));
    sheet->run();
    // The window below may have gone meanwhile, and the sheet with it.
    if (!sheet)
        return alert.cancel;
    const Alert::Answer answer = sheet->answer();
    delete sheet;
    return answer;
}
