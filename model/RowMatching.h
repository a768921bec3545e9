#pragma once

#include "model/Listing.h"
#include "model/NamePattern.h"
#include "model/RowSet.h"

#include <QSet>

#include <functional>

// What a person chooses in the sheet of the group selection.
enum class MatchTarget { Name, Size, Date, Type };
enum class MatchMethod { Contains, BeginsWith, EndsWith, Equals };
struct ExpandSelection {
    MatchTarget target = MatchTarget::Name;
    MatchMethod method = MatchMethod::Contains;
    QString text {}; // "": nothing is to be done
    bool caseSensitive = false;
};

// Which rows a text, a letter or another listing picks out. ".." (row 0) is a row like the others
// for letters and terms, and none for patterns and comparisons.
namespace RowMatching {

using DateToText = std::function<QString(const QDateTime &)>;

// Where a search begins: below the selected row, or at the top.
int startRow(int selectedRow, qsizetype count);

// The next row below whose name begins with the letter or its upper case, then the first from the
// top; -1 when there is none.
int nextLetterItem(const QString &letter, const Listing &rows, int selectedRow);
int indexOfFirstFoundLetterItem(const QString &letter, const Listing &rows);

// The next row below with the term in its name, size, date or type, whatever the case. Kept: from
// the top on only the names are looked at. -1 when there is none.
int nextFoundItem(const QString &term, const Listing &rows, int selectedRow,
                  const DateToText &dateText);
int indexOfFirstFoundStringItem(const QString &term, const Listing &rows);

bool matches(const QString &field, const ExpandSelection &request);
// What a text with wildcards stands for: "contains" and "equals" look at the whole of a field,
// "begins with" and "ends with" at as much of it as there is.
NamePattern patternOf(const ExpandSelection &request);
RowSet matchingRows(const Listing &rows, const ExpandSelection &request,
                    const DateToText &dateText);

// The names of a listing's rows, ".." not among them, to look many entries up in; valid as long as
// the listing.
QSet<QByteArrayView> namesOf(const Listing &rows);
// Kept: only the key "name" is ever looked at; "size", "date" and "type" find nothing.
bool arrayContainsEntry(const QSet<QByteArrayView> &names, const Entry &entry,
                        QLatin1StringView searchObject);

// The rows whose names the other listing has too.
RowSet rowsOfSameName(const Listing &rows, const Listing &others);

// The rows that stand in both, equal by name, size text, date and type.
struct EqualRows {
    RowSet here;
    RowSet there;
};
EqualRows equalRows(const Listing &rows, const Listing &others);

} // namespace RowMatching
