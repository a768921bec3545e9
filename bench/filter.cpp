// A key in the filter of a pane to its rows painted, in a folder of 100,000, against one pass over
// the names that makes them small letters and looks for the text in them.

#include "bench/LargeFolder.h"
#include "bench/Measure.h"
#include "bench/Panes.h"
#include "window/FilterBar.h"

#include <QApplication>
#include <QKeyEvent>

#include <cstring>

namespace {

using namespace Qt::StringLiterals;

constexpr int Runs = 15;
constexpr int Rows = 100'000;

void type(FilterField &field, QChar letter)
{
    QKeyEvent press(QEvent::KeyPress, letter.toUpper().unicode(), Qt::NoModifier, letter);
    QCoreApplication::sendEvent(&field, &press);
}

// How many names have the text.
qsizetype bareMatches(const Listing &rows, QByteArrayView text)
{
    char small[256];
    qsizetype found = 0;
    for (qsizetype row = FirstItemRow; row < rows.size(); ++row) {
        const QByteArrayView name = rows[row].nameBytes();
        for (qsizetype i = 0; i < name.size(); ++i)
            small[i] = name[i] >= 'A' && name[i] <= 'Z' ? char(name[i] + ('a' - 'A')) : name[i];
        found += ::memmem(small, size_t(name.size()), text.data(), size_t(text.size())) != nullptr;
    }
    return found;
}

} // namespace

int main(int argc, char **argv)
{
    const OwnHome home;
    const QApplication application(argc, argv);
    const QString folder = home.path(u"folder"_s);
    fillFolder(folder.toUtf8(), Rows, [](int) { return std::string(); });

    Panes panes(home);
    panes.open(folder);
    panes.left.setFocus();
    panes.application.commands().run(Command::QuickFilter);
    FilterField &field = *panes.application.mainWindow().filterBars.left->field;
    const Listing whole = panes.model.wholeRows(Side::Left);
    // The first key looks at every name, the next at those that are left.
    for (const QByteArray before : { "", "7" }) {
        const QByteArray after = before + (before.isEmpty() ? '7' : 'f');
        const auto expected = bareMatches(whole, after);
        Measure::report(before.isEmpty() ? "filter-100k" : "filter-100k-next", Runs,
                        { .work =
                              [&] {
                                  type(field, QChar::fromLatin1(after.back()));
                                  panes.paint();
                              },
                          .floor = [&] { bareMatches(whole, after); },
                          .before =
                              [&] {
                                  field.setText(QString::fromLatin1(before));
                                  panes.paint();
                              } });
        field.setText(QString::fromLatin1(after));
        if (panes.model.rowsLeft().size() - 1 != expected)
            std::exit(1);
    }
    return 0;
}
