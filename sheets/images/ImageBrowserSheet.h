#pragma once

#include "sheets/images/PictureView.h"
#include "widgets/Sheet.h"

class ActivitySpinner;
class ElidedLabel;
class ImageRows;
class ImageTable;
class QButtonGroup;
class QCheckBox;

// The small pictures of a folder beside a large one, and below it what is known of that.
class ImageBrowserSheet final : public Sheet {
    Q_OBJECT

public:
    ImageBrowserSheet(ImageRows &images, QWidget *mainWindow);

    // outlets
    ImageTable *tableView;
    PictureView *imageView;
    ElidedLabel *currentPath;
    ElidedLabel *imageName;
    ElidedLabel *imageDimensions;
    ElidedLabel *imageSize;
    ElidedLabel *imageDate;
    ActivitySpinner *progressIndicator;
    QButtonGroup *scaling; // by number: ImageScaling
    QCheckBox *animates;

Q_SIGNALS:
    void openAsked(); // another folder
    void closeAsked();

private:
    QWidget *newFolderRow();
    QWidget *newPicturePart();
    QWidget *newChoices();
    ElidedLabel *newText(const QString &name);
};
