#pragma once

#include "sheets/search/SearchQuery.h"
#include "widgets/Sheet.h"

class ActivitySpinner;
class ElidedLabel;
class QAbstractItemModel;
class QCheckBox;
class QHBoxLayout;
class QLineEdit;
class QTableView;
class QTabWidget;
class SearchResultModel;
class SearchResultTable;

// The metadata search: what is searched for and how, what was found, and what is known of the
// selected one.
class SpotlightSearchSheet final : public Sheet {
    Q_OBJECT

public:
    // Widths in pixels; 0: the column's own.
    struct Widths {
        int name = 0;
        int path = 0;
        int value = 0;
    };
    SpotlightSearchSheet(SearchResultModel &results, QAbstractItemModel &details,
                         const SearchOptions &options, const Widths &widths, QWidget *mainWindow);

    SearchOptions options() const;
    void setOptions(const SearchOptions &options);
    void showSearching(bool searching);
    void showResults(); // instead of details
    void showStatus(const QString &status, const QString &note);
    void setDetailsPlaceholder(const QString &text);

    // Of the page with the details; the other one's is that of the results.
    static constexpr QLatin1StringView DetailsIdentifier { "Details" };
    QString selectedIdentifier() const;

    QLineEdit *searchField; // outlets
    SearchResultTable *resultTable;

Q_SIGNALS:
    void searchAsked(); // at once
    void textTyped(); // more of it may come
    void optionsChanged();
    void systemSearchAsked(); // the desktop's own window
    void tabViewDidSelect(const QString &identifier);

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override; // of the field

private:
    void addField();
    void addOptions();
    void addPages(QAbstractItemModel &details, const Widths &widths);
    void addState();

    QCheckBox *_searchContent;
    QCheckBox *_ignoreCase;
    QCheckBox *_ignoreMarks;
    QCheckBox *_wholeWords;
    QTabWidget *_pages;
    QTableView *_details;
    QLabel *_detailsPlaceholder;
    ActivitySpinner *_spinner;
    ElidedLabel *_status;
    bool _searching = false;
};
