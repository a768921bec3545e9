#pragma once

#include <QLineEdit>

class DiskQuestions;
class QStringListModel;

// A field to type the path of a folder in: "~" is the home folder, and what is typed is completed
// by the folders that are there, by hidden ones once a dot is typed. Tab takes what is offered, as
// far as there is no choice. The names come when the disk has answered; nothing waits for it.
class PathField final : public QLineEdit {
    Q_OBJECT

public:
    explicit PathField(DiskQuestions &questions, QWidget *parent = nullptr);

    // "" where the text is none that starts at "/" or "~". Blanks at its end are a name's.
    QString path() const;

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override; // of the offers

private:
    void complete(const QString &typed);
    void setOffers();
    void showOffers();
    QStringList fitting() const; // of what is offered
    bool takeOffer(); // false: there is none, and nothing to wait for
    void take(const QString &text);

    DiskQuestions &questions;
    QStringListModel *_offered;
    QString _typedFolder; // whose names are offered, as it was typed, with the slash at its end
    QStringList _names; // of the folders in it
    bool _offersHidden = false;
    bool _isAsking = false; // for the names
    bool _takesWhenAnswered = false; // Tab was faster than the disk
};
