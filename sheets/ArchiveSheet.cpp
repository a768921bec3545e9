#include "sheets/ArchiveSheet.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "model/Messages.h"
#include "widgets/ActivitySpinner.h"
#include "widgets/ElidedLabel.h"

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
    connect(addQuietButton(localized("Cancel"), *archiveSheetProgressIndicator),
            &QPushButton::clicked, this, &ArchiveSheet::cancelArchiveSheet);
}

void ArchiveSheet::showArchiveSheet(const QString &title)
{
    setArchiveSheetTitleText(title);
    archiveSheetProgressIndicator->setFocus();
    if (!isUp())
        setArchiveProgressIndicator(true);
    comeUp();
}

void ArchiveSheet::setArchiveSheetTitleText(const QString &text)
{
    archiveSheetTitle->setText(FileName::shown(text));
}

void ArchiveSheet::closeArchiveSheet()
{
    setArchiveProgressIndicator(false);
    goAway();
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
