#include "window/ArchiveSheet.h"

#include "model/Messages.h"
#include "platform/FileName.h"
#include "platform/Localized.h"
#include "views/ElidedLabel.h"
#include "window/ActivitySpinner.h"

#include <QHBoxLayout>
#include <QPushButton>

ArchiveSheet::ArchiveSheet(MessageBus &messages, QWidget *mainWindow)
    : Sheet(mainWindow)
    , bus(messages)
    , archiveSheetProgressIndicator(new ActivitySpinner(this))
    , archiveSheetTitle(new ElidedLabel(Qt::ElideMiddle, this))
{
    setAccessibleName(localized("Progress"));
    archiveSheetTitle->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto *line = new QHBoxLayout;
    line->addWidget(archiveSheetProgressIndicator);
    line->addWidget(archiveSheetTitle, 1);
    rows().addLayout(line);
    auto *cancel = addButton(localized("Cancel"));
    // A Return or a space typed ahead for a pane must not cancel, so the button is no default and
    // does not have the focus.
    cancel->setDefault(false);
    cancel->setAutoDefault(false);
    archiveSheetProgressIndicator->setFocusPolicy(Qt::StrongFocus);
    connect(cancel, &QPushButton::clicked, this, &ArchiveSheet::cancelArchiveSheet);
}

void ArchiveSheet::showArchiveSheet(const QString &title)
{
    setArchiveSheetTitleText(title);
    archiveSheetProgressIndicator->setFocus();
    if (!isVisible())
        setArchiveProgressIndicator(true);
    show();
}

void ArchiveSheet::setArchiveSheetTitleText(const QString &text)
{
    archiveSheetTitle->setText(FileName::shown(text));
}

void ArchiveSheet::closeArchiveSheet()
{
    setArchiveProgressIndicator(false);
    hide();
}

void ArchiveSheet::cancelArchiveSheet()
{
    setArchiveSheetTitleText(localized("Canceling progress..."));
    closeArchiveSheet();
    bus.post(CancelArchiving);
}

void ArchiveSheet::setArchiveProgressIndicator(bool spinning)
{
    if (spinning)
        archiveSheetProgressIndicator->start();
    else
        archiveSheetProgressIndicator->stop();
}
