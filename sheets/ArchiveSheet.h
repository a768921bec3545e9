#pragma once

#include "model/ArchiveProgressSheet.h"
#include "widgets/Sheet.h"

class ActivitySpinner;
class ElidedLabel;
class MessageBus;

// Stands while an archive is packed or unpacked: a spinner and one line of text. Main thread.
class ArchiveSheet final : public Sheet, public ArchiveProgressSheet {
    Q_OBJECT

public:
    ArchiveSheet(MessageBus &bus, QWidget *mainWindow);

    void showArchiveSheet(const QString &title) override;
    void setArchiveSheetTitleText(const QString &text) override;
    void closeArchiveSheet() override;
    void cancelArchiveSheet() override;
    void setArchiveProgressIndicator(bool spinning);

protected:
    void reject() override { cancelArchiveSheet(); } // Escape and the close box
    void accept() override { }

private:
    MessageBus &bus;
    ActivitySpinner *archiveSheetProgressIndicator;
    ElidedLabel *archiveSheetTitle;
};
