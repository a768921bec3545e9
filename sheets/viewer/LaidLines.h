#pragma once

#include "texts/ShownLine.h"
#include "texts/Stretch.h"

#include <QFont>
#include <QTextLayout>

#include <memory>
#include <unordered_map>

// The lines of a stretch in the rows that they are shown in; each is laid out when it is asked for.
// Main thread.
class LaidLines final {
public:
    struct Line {
        ShownLine shown;
        QTextLayout layout;
        double width = 0; // of the widest row
    };
    // A row of a line, by their numbers.
    struct Place {
        int line = 0;
        int row = 0;
        friend bool operator==(const Place &, const Place &) = default;
        friend bool operator<(const Place &a, const Place &b)
        {
            return a.line != b.line ? a.line < b.line : a.row < b.row;
        }
    };

    void setStretch(const Stretch &stretch);
    const Stretch &stretch() const { return _stretch; }
    void setForm(const TextForm &form);
    const TextForm &form() const { return _form; }
    struct Look {
        QFont font {};
        int rowHeight = 1;
        double wrapWidth = 0; // of the room for a row; 0: each line is one row
        double tabWidth = 80;
        friend bool operator==(const Look &, const Look &) = default;
    };
    void setLook(const Look &look);

    bool isEmpty() const { return _stretch.lineCount() == 0; }
    const Line &line(int number);
    int rowCount(int line);
    // Moves by rows as far as the stretch goes; answers how many are left.
    int move(Place &place, int rows);
    Place last();

    Place placeOf(qint64 offset); // of a byte of the stretch
    qint64 startOf(const Place &place);
    qint64 endOf(const Place &place); // of what is shown in the row
    qint64 offsetAt(const Place &place, double x); // the nearest place between two characters
    double xOf(const Place &place, qint64 offset);
    QString textOf(const Place &place);
    // The character before or behind a place between two, in the same line.
    qint64 besides(qint64 offset, int step);
    struct Word {
        qint64 start;
        qint64 end;
    };
    Word wordAt(const Place &place, qint64 offset);

private:
    QTextLine rowAt(const Place &place) { return line(place.line).layout.lineAt(place.row); }

    Stretch _stretch;
    TextForm _form;
    Look _look;
    std::unordered_map<int, std::unique_ptr<Line>> _lines; // those laid out
};
