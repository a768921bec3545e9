#pragma once

#include <QDateTime>
#include <QVariantMap>

class UserDefaults;

// The two date texts of the lists and the information sheet, in the user's formats. Main thread.
class DateText {
public:
    explicit DateText(const UserDefaults &defaults);

    QString getLocalizedShortDateAndTime(const QDateTime &date) const;
    QString getLocalizedDateAndTime(const QDateTime &date) const;
    QVariantMap systemDefinedLocale() const;

private:
    const UserDefaults &defaults;
};
