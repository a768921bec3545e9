#pragma once

#include <QString>

// Byte counts as text, in binary units. Any thread.
class SizeText {
public:
    // One item's size: "512 Bytes", "2 KB", "5.00 MB".
    static QString getCalcFileSize(qint64 bytes);
    // The bytes that this text reads as: rounded to its digits, in single precision.
    static double readAsText(qint64 bytes);
    // A sum of sizes, three significant digits: "118 MB".
    static QString getCalcFileSizeWithDouble(double bytes);
    // What a volume or a whole folder has, up to three digits: "53.1 GB", "1.82 TB", "12 Bytes".
    static QString getRoundedSize(double bytes);
    // The C library's digits with a point in every locale; Qt's own formatting rounds 2.5 up.
    static QString fixed(double value, int decimals);
};
