#include "sheets/WorkingSheet.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "model/Messages.h"
#include "widgets/ElidedLabel.h"
#include "widgets/MenuTextButton.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QPushButton>

#include <chrono>

namespace {

constexpr auto PaintPause = std::chrono::milliseconds(30); // as often as an eye can follow

} // namespace

WorkingSheet::WorkingSheet(MessageBus &messages, QWidget *mainWindow)
    : Sheet(mainWindow)
    , bus(messages)
    , workingInfoText(new ElidedLabel(Qt::ElideMiddle, this))
    , _counter(new QLabel(this))
    , workingProgressIndicator(new QProgressBar(this))
    , _details(new ElidedLabel(Qt::ElideRight, this))
    , _waiting(new MenuTextButton(this))
{
    setAccessibleName(localized("Progress"));
    workingProgressIndicator->setAccessibleName(localized("Progress"));
    workingProgressIndicator->setTextVisible(false);
    _counter->setTextFormat(Qt::PlainText);
    for (ElidedLabel *label : { workingInfoText, _details })
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

    auto *texts = new QHBoxLayout;
    texts->addWidget(workingInfoText, 1);
    texts->addWidget(_counter);
    rows().addLayout(texts);
    rows().addWidget(workingProgressIndicator);
    rows().addWidget(_details); // keeps its line while empty, so that nothing moves
    addBesideButtons(*_waiting);
    setWaitingCount(0);
    _cancel = addQuietButton(localized("Cancel"), *workingProgressIndicator);
    connect(_cancel, &QPushButton::clicked, this, &WorkingSheet::reject);
    _paintPause.setSingleShot(true);
    _paintPause.setInterval(PaintPause);
    // At once: an update that was asked for before the pause is forgotten in it, and the toolkit
    // takes a later one for that one.
    _paintPause.callOnTimeout(this, [this] {
        setUpdatesEnabled(true);
        repaint();
    });
}

void WorkingSheet::showWorkingSheet()
{
    setWorkingSheetProgressValue(0);
    _cancel->setEnabled(true);
    setWorkingSheetDetailText({}); // of the last item of an earlier run
    if (!isUp())
        standOverWindow();
}

void WorkingSheet::standOverWindow()
{
    // Of two modal sheets the newer one blocks the older: who answers a question would find it
    // dead until the run ends. So the sheet becomes modal only when the question is answered.
    const auto *question = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (question)
        connect(question, &QDialog::finished, this, &WorkingSheet::questionAnswered,
                Qt::ConnectionType(Qt::SingleShotConnection | Qt::UniqueConnection));
    setWindowModality(question ? Qt::NonModal : Qt::WindowModal);
    setAttribute(Qt::WA_ShowWithoutActivating, question != nullptr);
    workingProgressIndicator->setFocus();
    comeUp();
}

void WorkingSheet::questionAnswered()
{
    if (!isUp())
        return;
    hide(); // a window in sight keeps its modality
    standOverWindow();
}

void WorkingSheet::closeWorkingSheet()
{
    goAway();
}

void WorkingSheet::cancelWorkingSheet()
{
    setWorkingSheetInfoText(localized("Canceling progress..."));
    setWorkingSheetDetailText(localized("The item under way is finished first."));
    _cancel->setEnabled(false);
    bus.post(CancelThread);
}

void WorkingSheet::reject()
{
    if (_cancel->isEnabled()) // once is enough
        cancelWorkingSheet();
}

void WorkingSheet::paintSoon()
{
    setUpdatesEnabled(false);
    if (!_paintPause.isActive())
        _paintPause.start();
}

void WorkingSheet::setWorkingSheetInfoText(const QString &text)
{
    paintSoon();
    workingInfoText->setText(FileName::shown(text));
}

void WorkingSheet::setWorkingSheetDetailText(const QString &text)
{
    if (!_cancel->isEnabled())
        return; // what it says of the cancelling stays
    paintSoon();
    _details->setText(text);
}

void WorkingSheet::setWaitingMenu(QMenu *menu)
{
    _waiting->setMenu(menu);
}

void WorkingSheet::setWaitingCount(int count)
{
    _waiting->setPlainText(filled(localized("%i waiting"), count));
    _waiting->setVisible(count > 0);
}

void WorkingSheet::setWorkingSheetMaxProgressValue(double value)
{
    workingProgressIndicator->setMaximum(int(value));
    showCounter();
}

void WorkingSheet::setWorkingSheetProgressValue(double value)
{
    workingProgressIndicator->setValue(int(value));
    showCounter();
}

void WorkingSheet::showCounter()
{
    paintSoon();
    const int value = std::max(0, workingProgressIndicator->value());
    _counter->setText(
        filled(filled(localized("%i of %i"), value), workingProgressIndicator->maximum()));
}
