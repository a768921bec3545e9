#pragma once

#include "files/Readings.h"
#include "pictures/ImageFileTypes.h"
#include "pictures/PictureLoader.h"
#include "sheets/images/ImageRows.h"
#include "sheets/images/PictureView.h"

#include <QPointer>

class DateText;
class FileKinds;
class FileQueries;
class ImageBrowserSheet;
class Launching;
class MovingPicture;
class OpenDialogs;
class OpenPanel;

// The image browser: what its sheet shows and does. Main thread.
class ImageBrowser final : public QObject {
    Q_OBJECT

public:
    struct Services {
        OpenPanel &openPanel;
        OpenDialogs &openDialogs;
        ForeignFiles *foreignFiles; // may be missing
    };
    ImageBrowser(const FileQueries &queries, const DateText &dates, Launching &launching,
                 const FileKinds &kinds, const Services &services, QWidget *mainWindow);
    ~ImageBrowser() override;

    void showImageBrowserSheet(const QString &folder);
    void closeImageBrowserSheet();
    void openPath(); // another folder, in a panel
    void setScaling(int choice);
    void setAnimates(bool animates);
    void reset(); // as if no folder was shown
    void setupPaths(const QString &folder); // lists it beside the window
    void viewImage(int row);

    // Before the program ends. False when a thread does not come back.
    bool end(QDeadlineTimer deadline);

private:
    // A large picture that is there, or comes.
    struct Large {
        quint64 id = 0;
        QSize bound {};
        LoadedPicture picture {};
    };

    void connectSheet();
    void _setupPaths(const FolderImages &images);
    void wantThumbnails();
    void takeThumbnail(quint64 id, const LoadedPicture &picture);
    void wantPicture();
    void takePicture(quint64 id, const QSize &bound, const LoadedPicture &picture);
    void showPicture(const LoadedPicture &picture);
    void showBroken();
    void clearPicture();
    void play();
    int neighbor() const; // the row that is likely to be chosen next; -1: none

    const FileQueries &queries;
    const DateText &dates;
    Launching &launching;
    const FileKinds &kinds;
    const Services _services;
    QWidget *mainWindow; // not owned
    const std::shared_ptr<const ImageFileTypes> imageFileTypes; // the listing's, too
    Readings _listings;
    PictureLoader _loader;
    ImageRows rows;
    QString curPath; // the folder that is shown
    QPointer<ImageBrowserSheet> imageBrowserSheet; // while it is open
    ImageScaling _scaling = ImageScaling::ProportionallyDown;
    bool _animates = true;
    int _row = -1; // of the large picture
    int _step = 1; // from the one before it: where a person is going
    std::optional<Large> _shown;
    std::optional<Large> _next; // made before it is asked for
    std::unique_ptr<MovingPicture> _movie;
    QTimer _boundSettled; // a window that is being made larger has many sizes
};
