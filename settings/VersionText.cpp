#include "settings/VersionText.h"

qint32 VersionText::hexValue(QByteArrayView text)
{
    quint32 value = 0; // long texts wrap around
    for (const char c : text) {
        value <<= 4;
        if (c >= '0' && c <= '9')
            value += quint32(c - '0');
        else if (c >= 'A' && c <= 'F')
            value += quint32(c - 'A' + 10);
    }
    return qint32(value);
}
