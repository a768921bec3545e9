#pragma once

#include <QByteArray>
#include <QString>

struct CommandEnd;

// What a person is shown of what a command line wrote. Any thread.
namespace OutputText {

// As much as is kept, and as a view shows quickly. Escapes are longer than what they stand for.
inline constexpr int MostCharacters = 16 << 20;
inline constexpr int MostLines = 1'500'000;

// Bytes as text: UTF-8, else as the person's locale has it. What would be an order to a terminal,
// and bytes that are no text, stand as escapes ("\x1B"). No line is longer than is good for a text
// view; where it is cut, that is said.
QString shown(const QByteArray &output, bool isCut);

// Kept: the errors themselves are not shown; two sorts of them have a text of their own.
QString ofErrors(const QByteArray &errors, const QString &firstWord);

// One line about how it ended.
QString ofEnd(const CommandEnd &end, const QString &commandLine);

} // namespace OutputText
