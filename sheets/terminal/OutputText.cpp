#include "sheets/terminal/OutputText.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "platform/Programs.h"

#include <QStringDecoder>

#include <csignal>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

constexpr int LongestLine = 64 << 10; // characters; a longer one goes on in the next
constexpr char16_t Undecodable = 0xDC00; // plus the byte, as FileName has it

QString decoded(const QByteArray &bytes)
{
    const auto locale =
        QStringConverter::encodingForName(QStringDecoder(QStringDecoder::System).name());
    if (locale != QStringConverter::Utf8 && !bytes.isValidUtf8()) {
        QStringDecoder decoder(QStringDecoder::System);
        if (QString text = decoder(bytes); !decoder.hasError())
            return text;
    }
    return FileName::fromBytes(bytes);
}

bool isPlain(char16_t c)
{
    return (c >= u' ' && c < 0x7F) || (c >= 0xA0 && c < 0x600);
}

} // namespace

QString OutputText::shown(const QByteArray &output, bool isCut)
{
    const QString text = decoded(output);
    QString result;
    result.reserve(text.size());
    int lines = 0;
    int column = 0;
    const auto endLine = [&] {
        result += u'\n';
        column = 0;
        return ++lines < MostLines;
    };
    bool goesOn = true;
    for (qsizetype i = 0; i < text.size() && goesOn; ++i) {
        const QChar character = text[i];
        const char16_t c = character.unicode();
        const bool hasNext = i + 1 < text.size();
        if (c == u'\n' || (c == u'\r' && hasNext && text[i + 1] == u'\n')) {
            i += c == u'\r' ? 1 : 0;
            goesOn = endLine();
            continue;
        }
        if (column >= LongestLine && !endLine()) {
            goesOn = false;
            break;
        }
        const qsizetype before = result.size();
        if (isPlain(c) || c == u'\t') {
            result += character;
        } else if (character.isHighSurrogate() && hasNext && text[i + 1].isLowSurrogate()) {
            result += character;
            result += text[++i];
        } else if (c >= Undecodable + 0x80 && c <= Undecodable + 0xFF) {
            result += QStringLiteral("\\x%1").arg(QString::number(c - Undecodable, 16).toUpper());
        } else {
            result += FileName::shown(QString(character));
        }
        column += int(result.size() - before);
        goesOn = goesOn && result.size() <= MostCharacters;
    }
    if (isCut || !goesOn) {
        if (!result.isEmpty() && !result.endsWith(u'\n'))
            result += u'\n';
        result += localized("[The output is cut here: there was more.]") + u'\n';
    }
    return result;
}

QString OutputText::ofErrors(const QByteArray &errors, const QString &firstWord)
{
    QString result;
    if (errors.contains("command not found"))
        result += filled(localized("%@: Command not found"), FileName::shown(firstWord));
    if (errors.contains("Directory does not exists!"))
        result += localized("Error: Error: Directory does not exists!");
    return result;
}

QString OutputText::ofEnd(const CommandEnd &end, const QString &commandLine)
{
    const QString line = FileName::shown(commandLine);
    if (end.error != 0)
        return line + u": "_s + QString::fromLocal8Bit(strerror(end.error));
    const int number = end.status - 128;
    if (number > 0 && number < NSIG)
        return line + u": "_s + filled(localized("Ended by signal %i"), number) + u" ("_s
            + QString::fromLocal8Bit(strsignal(number)) + u')';
    return line + u": "_s + filled(localized("Exit status %i"), end.status);
}
