#pragma once

#include "pictures/PictureLoader.h"
#include "sheets/viewer/FindRun.h"
#include "sheets/viewer/ViewedFile.h"

#include <QPointer>

class OpenDialogs;
class ViewerSheet;
class Waiting;

// The viewer: what its sheet shows of a file, and does. Nothing of the disk is waited for once it
// is open. Main thread.
class Viewer final : public QObject {
    Q_OBJECT

public:
    struct Services {
        Waiting &waiting;
        OpenDialogs &openDialogs;
        ForeignFiles *foreignFiles; // may be missing
    };
    Viewer(const Services &services, QWidget *mainWindow);
    ~Viewer() override;

    // Returns when the person has closed it. False for a folder, of which nothing is shown.
    bool view(const QString &path);

    // Before the program ends. False when a thread does not come back.
    bool end(QDeadlineTimer deadline);

private:
    // As a person left it, for the next file.
    struct Left {
        QSize size;
        bool wraps = true;
        bool ignoresCase = true;
        QString text; // searched for
    };

    void show(const QString &path, const ViewedFile &viewed);
    void connectSheet();
    void close();
    void setMode(ViewMode mode);
    void readStretch(qint64 offset, int before, int behind);
    void takeStretch(const Stretch &stretch);
    void copy();
    void wantPicture();
    void takePicture(const QSize &bound, const LoadedPicture &picture);
    void find(FileSearch::Direction direction);
    void takeHit(const FileSearch::Hit &hit);
    void showStatus();

    const Services _services;
    QWidget *mainWindow; // not owned
    Readings _pages;
    Readings _copies;
    FindRun _find;
    FileSearch::Direction _direction = FileSearch::Direction::Forwards;
    PictureLoader _pictures;
    quint64 _picture = 0; // the number of the one that is shown
    QTimer _boundSettled; // a window that is being made larger has many sizes
    QTimer _late; // what is asked of the disk takes long
    QPointer<ViewerSheet> sheet; // while it is open
    std::shared_ptr<const FileBytes> _file; // as long
    QString _trouble; // of the disk, and what else there is to tell
    Left _left;
};
