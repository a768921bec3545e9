#pragma once

#include <QByteArray>
#include <QString>

// The code of four characters that says what kind of file it is, as other systems note it and the
// program itself (see ItemMarks::setCodes); empty for none. Links are followed. Any thread.
QByteArray typeCodeOfFile(const char *path);
QByteArray typeCodeOfFile(const QString &path);
