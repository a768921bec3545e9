#pragma once

#include <QMainWindow>

class UserDefaults;

// The main window's frame: a background put together from nine pieces, and a close box that asks
// for the end of the program.
class UnifiedWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit UnifiedWindow(const UserDefaults &defaults, QWidget *parent = nullptr);

    // Kept: the pieces whose names begin with "flat_" belong to false, the plain ones to true.
    void setFlat(bool flat);
    bool flat() const { return _flat; }
    void readLook(); // of the settings

    void setMinSize(const QSize &size); // at least 150 by 150

Q_SIGNALS:
    void closeAsked(); // by the close box; the window itself stays

protected:
    void paintEvent(QPaintEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    const UserDefaults &defaults;
    bool _flat = true;
};
