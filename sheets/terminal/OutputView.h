#pragma once

#include <QPlainTextEdit>
#include <QTimer>

// The output of commands. Much of it is put in piece by piece, and what is oldest leaves, and
// that is said, when it becomes too much to be quick. Main thread.
class OutputView final : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit OutputView(QWidget *parent = nullptr);

    void insertText(const QString &text); // at the end
    void deleteAll(); // what is on its way, too
    bool isFilling() const { return _feed.isActive(); }

    QSize sizeHint() const override;

private:
    void insertPiece();
    void forgetOldest();

    QString _pending;
    qsizetype _inserted = 0; // of that
    QTimer _feed;
};
