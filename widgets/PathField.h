#pragma once

#include <QLineEdit>

class DiskQuestions;
class QStringListModel;

// A field to type the path of a folder in: "~" is the home folder, and what is typed is completed
// by the folders that are there. The names come when the disk has answered; nothing waits for it.
class PathField final : public QLineEdit {
    Q_OBJECT

public:
    explicit PathField(DiskQuestions &questions, QWidget *parent = nullptr);

    // "" where the text is none that starts at "/" or "~". Blanks at its end are a name's.
    QString path() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override; // of the offers

private:
    void complete(const QString &typed);
    void offer(const QString &typedFolder, const QStringList &names);

    DiskQuestions &questions;
    QStringListModel *_offered;
    QString _typedFolder; // whose names are offered, as it was typed, with the slash at its end
};
