#include "platform/desktop/HelperWords.h"

#include "files/FileName.h"

using namespace Qt::StringLiterals;

namespace {

// As printable ASCII: what asks for the password shows it, and takes no other bytes.
QString escaped(const QString &text)
{
    QString word;
    for (const char byte : FileName::toBytes(text)) {
        if (byte >= ' ' && byte <= '~' && byte != '%')
            word += QLatin1Char(byte);
        else
            word += u'%' + u"%1"_s.arg(quint8(byte), 2, 16, QLatin1Char('0'));
    }
    return word;
}

} // namespace

std::optional<QStringList> helperWords(const QString &command, const QStringList &arguments,
                                       const CommandSubject &subject)
{
    const auto *process = std::get_if<ProcessStart>(&subject);
    if (process && command == u"/bin/kill" && arguments.size() == 1)
        return QStringList { u"kill"_s, escaped(arguments[0]), QString::number(process->ticks) };
    const auto *item = std::get_if<FileIdentity>(&subject);
    if (!item || arguments.size() != 2)
        return std::nullopt;
    const QString identity = u"%1:%2"_s.arg(item->device).arg(item->inode);
    if (command == u"/usr/sbin/chown")
        return QStringList { u"chown"_s, escaped(arguments[0]), escaped(arguments[1]), identity };
    if (command == u"/usr/bin/chattr")
        return QStringList { u"immutable"_s, escaped(arguments[0]), escaped(arguments[1]),
                             identity };
    return std::nullopt;
}
