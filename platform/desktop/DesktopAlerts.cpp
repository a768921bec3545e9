#include "platform/desktop/DesktopAlerts.h"

#include "base/MainThread.h"
#include "platform/OpenDialogs.h"
#include "widgets/Icons.h"

#include <QApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int textWidth = 420;

// A label wraps between words only, and a file name of 255 letters is one word: gives it places to
// break, which nobody sees.
QString breakable(const QString &text)
{
    constexpr int longestRun = 32;
    QString result;
    int run = 0;
    for (const QChar character : text) {
        if (run >= longestRun && !character.isLowSurrogate() && !character.isMark()) {
            result += QChar(0x200B);
            run = 0;
        }
        result += character;
        run = character.isSpace() ? 0 : run + 1;
    }
    return result;
}

QLabel *textLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(breakable(text), parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setFixedWidth(textWidth);
    label->setAccessibleName(text);
    return label;
}

// Plain text, the buttons from left to right in the order given.
class AlertDialog final : public QDialog {
public:
    AlertDialog(const Alert &alert, QWidget *parent)
        : QDialog(parent)
        , _answer(alert.cancel)
    {
        setObjectName(u"alert"_s);
        setWindowTitle(alert.title);
        setAccessibleName(alert.title);
        setAccessibleDescription(alert.text);
        setWindowModality(parent ? Qt::WindowModal : Qt::ApplicationModal);

        auto *rows = new QVBoxLayout(this);
        rows->setContentsMargins(20, 20, 20, 16);
        rows->setSpacing(16);
        rows->setSizeConstraint(QLayout::SetFixedSize);
        auto *columns = new QHBoxLayout;
        columns->setSpacing(16);
        columns->addWidget(iconLabel(alert.style), 0, Qt::AlignTop);
        columns->addLayout(texts(alert), 1);
        rows->addLayout(columns);
        rows->addLayout(buttonRow(alert));
    }

    Alert::Answer answer() const { return _answer; }

private:
    QLabel *iconLabel(Alert::Style alertStyle)
    {
        const QIcon icon = themedIcon(
            alertStyle == Alert::Style::Critical ? u"dialog-error"_s : u"dialog-information"_s);
        const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
        auto *label = new QLabel(this);
        label->setPixmap(icon.pixmap(QSize(size, size), devicePixelRatioF()));
        label->setAccessibleName(windowTitle());
        return label;
    }

    QLayout *texts(const Alert &alert)
    {
        auto *column = new QVBoxLayout;
        column->setSpacing(10);
        QLabel *text = textLabel(alert.text, this);
        QFont bold = text->font();
        bold.setWeight(QFont::DemiBold);
        text->setFont(bold);
        column->addWidget(text);
        if (!alert.details.isEmpty())
            column->addWidget(textLabel(alert.details, this));
        column->addStretch();
        return column;
    }

    QLayout *buttonRow(const Alert &alert)
    {
        auto *row = new QHBoxLayout;
        row->addStretch();
        for (const Alert::Button &button : alert.buttons) {
            auto *control = new QPushButton(QString(button.text).replace(u'&', "&&"_L1), this);
            control->setAccessibleName(button.text);
            connect(control, &QPushButton::clicked, this, [this, answer = button.answer] {
                _answer = answer;
                accept();
            });
            if (row->count() == 1) {
                control->setDefault(true);
                control->setFocus();
            }
            row->addWidget(control);
        }
        return row;
    }

    Alert::Answer _answer;
};

} // namespace

Alert::Answer DesktopAlerts::ask(const Alert &alert)
{
    Alert::Answer answer = alert.cancel;
    onMainThread([&] { answer = show(alert); });
    return answer;
}

DesktopAlerts::Silence::Silence(DesktopAlerts &alerts)
    : _alerts(alerts)
{
    _alerts._silent = true;
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        if (auto *alert = dynamic_cast<AlertDialog *>(window))
            alert->reject();
}

Alert::Answer DesktopAlerts::show(const Alert &alert)
{
    if (_silent)
        return alert.cancel;
    const OpenDialogs::Guard guard(_openDialogs);
    QWidget *modal = QApplication::activeModalWidget();
    QPointer<AlertDialog> dialog = new AlertDialog(alert, modal ? modal : _parent.data());
    dialog->exec();
    // The window below may have gone meanwhile, and the dialog with it.
    if (!dialog)
        return alert.cancel;
    const Alert::Answer answer = dialog->answer();
    delete dialog;
    return answer;
}
