#pragma once

#include <QLineEdit>

// The line a command is typed in. Up and Down walk the lines entered before, and what was being
// typed stands below them.
class CommandField final : public QLineEdit {
    Q_OBJECT

public:
    explicit CommandField(QWidget *parent = nullptr);

    // Empties the field, and answers what stood there; it can be called up again.
    QString take();

Q_SIGNALS:
    void entered();
    void stopAsked(); // Ctrl+C where there is nothing to copy
    void pageAsked(int pages); // of the output

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void walk(qsizetype step);

    QStringList _lines; // the oldest first
    qsizetype _place = 0; // of the one shown; behind the last one: what is being typed
    QString _typed;
};
