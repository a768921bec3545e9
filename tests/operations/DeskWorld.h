#pragma once

#include "tests/support/World.h"

// The operations between two panes, which show "from" and "to", and what was listed again.
struct Desk : World {
    explicit Desk(const QString &words = {})
        : World(u"from/, to/, trash/, "_s + words)
    {
        workspace.trashFolder = trash;
        defaults.setValue(Settings::LeftFileListLastPath, source);
        defaults.setValue(Settings::RightFileListLastPath, destination);
        start();
        bus.subscribe(DirectoryChanged, this, &Desk::note);
    }
    ~Desk() { bus.unsubscribe(this); }

    void showBoth(const QString &left, const QString &right)
    {
        bus.post(DirectoryChanged.left, { left });
        bus.post(DirectoryChanged.right, { right });
        listed.clear();
    }
    void note(Side side, const FolderChange &change)
    {
        listed += sideWord(side).at(0) + u' ' + PathText::lastComponent(change.path) + u' ';
    }
    QByteArray from(const QString &name) { return folder.read(u"from/"_s + name); }
    QByteArray to(const QString &name) { return folder.read(u"to/"_s + name); }
    QString tree() const { return treeOf(folder, { u"from"_s, u"to"_s, u"trash"_s }); }

    QString source = folder.path(u"from"_s);
    QString destination = folder.path(u"to"_s);
    QString trash = folder.path(u"trash"_s);
    FileOperations &operations = twinleaf;
    QString listed; // "L from R to "
};
