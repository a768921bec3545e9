#pragma once

#include <QList>
#include <QString>

// The folders that a pane has shown, one after the other, and where among them it stands. The
// oldest are forgotten.
class FolderHistory final {
public:
    struct Place {
        QString folder;
        QString selected {}; // the name of the item that was, when the pane left
    };
    enum class Way { Back, Forward };
    static constexpr qsizetype MostPlaces = 100;

    // The pane shows the folder, come there by itself: what lay ahead is forgotten. One that it
    // shows already adds nothing.
    void arrive(const QString &folder);
    // What is selected where the pane stands.
    void select(const QString &name);

    // Where this way leads; null at its end.
    const Place *next(Way way) const;
    // The pane went there, and shows this folder: another one where that is gone. Of the same
    // folder twice in a row one place is left.
    void travelled(Way way, const QString &shown);

private:
    bool holds(qsizetype place) const { return place >= 0 && place < _places.size(); }
    void mergeWithNext(qsizetype place);

    QList<Place> _places; // the oldest first
    qsizetype _at = -1;
};
