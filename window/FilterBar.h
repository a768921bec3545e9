#pragma once

#include <QLineEdit>

class PaneTableView;

// The field in which the filter of a pane is typed. Keys that mean nothing to it are the pane's.
class FilterField final : public QLineEdit {
    Q_OBJECT

public:
    FilterField(PaneTableView &pane, QWidget *parent);

Q_SIGNALS:
    void ended(); // Escape, or its button

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    PaneTableView &list;
};

// The line below a pane's list that is there while it is filtered.
class FilterBar final : public QWidget {
    Q_OBJECT

public:
    FilterBar(PaneTableView &pane, QWidget *parent);

    FilterField *field;
};
