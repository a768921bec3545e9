#pragma once

#include "sheets/viewer/ViewedFile.h"
#include "widgets/Sheet.h"

class ElidedLabel;
class FindBar;
class PictureView;
class QCheckBox;
class QComboBox;
class QStackedWidget;
class SegmentedControl;
class TextArea;

// A file to be looked at: as text, by its bytes, or as a picture.
class ViewerSheet final : public Sheet {
    Q_OBJECT

public:
    ViewerSheet(const QString &path, QWidget *mainWindow);

    void setMode(ViewMode mode);
    ViewMode mode() const;
    void setEncoding(const TextEncoding &encoding);
    TextEncoding encoding() const;
    void showMessage(const QString &text); // instead of the file; nothing can be chosen then

    // outlets
    TextArea *textArea;
    PictureView *pictureView;
    FindBar *findBar;
    SegmentedControl *modes;
    QComboBox *encodings;
    QCheckBox *wraps;
    ElidedLabel *status; // where one is

Q_SIGNALS:
    void modeChosen(ViewMode mode);
    void encodingChosen();
    void findAsked(); // again, of what stands in the field
    void findBackwardsAsked();
    void stopAsked(bool &stopped); // the search, by Escape: before the sheet is closed

public Q_SLOTS:
    void reject() override;

private:
    QWidget *newChoices(const QString &path);
    void addKeys();
    void chooseMode(ViewMode mode);
    void openFind();

    QStackedWidget *_pages;
};
