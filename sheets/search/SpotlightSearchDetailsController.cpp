#include "sheets/search/SpotlightSearchDetailsController.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "widgets/MenuText.h"

#include <QDateTime>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype LongestToolTip = 1000; // characters
constexpr qsizetype LongestValue = 4096; // characters; nobody reads more of one line

QString text(const QVariant &value)
{
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    switch (value.typeId()) {
    case QMetaType::QDateTime:
        return locale.toString(value.toDateTime().toLocalTime(), QLocale::LongFormat);
    case QMetaType::Double:
        return locale.toString(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    case QMetaType::LongLong:
    case QMetaType::Int:
        return locale.toString(value.toLongLong());
    case QMetaType::Bool:
        return value.toBool() ? localized("Yes") : localized("No");
    case QMetaType::QStringList:
        return value.toStringList().join(u", "_s);
    default:
        return value.toString();
    }
}

} // namespace

SpotlightSearchDetailsController::SpotlightSearchDetailsController(MetadataIndex &index)
    : metadataIndex(index)
{
    _rows.setHorizontalHeaderLabels({ localized("Property"), localized("Value") });
}

QString SpotlightSearchDetailsController::valueText(const QVariant &value)
{
    QString line = text(value);
    for (const QChar character : { u'\t', u'\r', u'\n' })
        line.remove(character);
    if (line.size() > LongestValue)
        line = line.first(LongestValue) + u'\u2026';
    return FileName::shown(line);
}

void SpotlightSearchDetailsController::setCurrentItem(const QString &path)
{
    _currentItem = path;
    _readings.drop();
    show({});
    if (path.isEmpty())
        return Q_EMIT arrived();
    _readings.start([index = &metadataIndex, path] { return index->attributesOf(path); },
                    [this](const QList<MetadataAttribute> &attributes) {
                        show(attributes);
                        Q_EMIT arrived();
                    });
}

void SpotlightSearchDetailsController::show(const QList<MetadataAttribute> &attributes)
{
    _rows.setRowCount(0);
    for (const MetadataAttribute &attribute : attributes) {
        QList<QStandardItem *> row { new QStandardItem(attribute.name),
                                     new QStandardItem(valueText(attribute.value)) };
        row.last()->setToolTip(plainToolTip(row.last()->text().left(LongestToolTip)));
        for (QStandardItem *item : row)
            item->setEditable(false);
        _rows.appendRow(row);
    }
}
