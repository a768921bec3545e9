#pragma once

#include "widgets/Sheet.h"

class Launching;

// What the program is: its name, version and copyright, and ways to its maker where there are any.
class About final : public Sheet {
    Q_OBJECT

public:
    struct Texts {
        QString name;
        QString version;
        QString copyright;
        QString donationAddress {};
        QString webAddress {};
        QString mailAddress {};
    };
    About(const Texts &texts, Launching &launching, QWidget *mainWindow);
};
