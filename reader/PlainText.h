#pragma once

#include <QByteArray>
#include <QString>

// The text of a file by what it says of its characters: a byte order mark, a declaration in its
// first lines (XML, HTML, the line for editors); else UTF-8 where it is that, else what the locale
// or, mostly, its western editors wrote. Never fails; what no character stands for is U+FFFD. As
// many bytes as ReaderWords::TextLimit may end within a character: there they were cut.
QString decodedText(const QByteArray &bytes);
