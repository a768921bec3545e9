#include "platform/ProcessIo.h"

#include <QByteArray>
#include <QFile>

std::optional<qint64> bytesWritten(pid_t process)
{
    QFile file(QStringLiteral("/proc/%1/io").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("wchar: "))
            return line.mid(7).toLongLong();
    }
    return std::nullopt;
}
