#include "reader/WarmUp.h"

#include <QBuffer>
#include <QDateTime>
#include <QFont>
#include <QFontMetricsF>
#include <QImageReader>
#include <QStringDecoder>

#include <ctime>
#include <exiv2/exiv2.hpp>
#include <iconv.h>
#include <memory>
#include <poppler-document.h>
#include <poppler-global.h>
#include <utility>

namespace {

// Converters are libraries of their own, which stay loaded as long as one is in use; poppler's
// words are all in these.
void keepConverters()
{
    for (const auto &[to, from] :
         { std::pair { "UTF-16", "UTF-8" }, std::pair { "UTF-8", "UTF-16" },
           std::pair { "UTF-16LE", "UTF-8" }, std::pair { "UTF-16BE", "UTF-8" } })
        static_cast<void>(iconv_open(to, from)); // never closed
}

} // namespace

void warmUp()
{
    keepConverters();
    // Dates and their zones.
    tzset();
    Q_UNUSED(QDateTime::currentDateTime().toMSecsSinceEpoch());
    // A document that there is none of: the tables are read all the same.
    poppler::set_debug_error_function([](const std::string &, void *) {}, nullptr);
    constexpr char Pdf[] = "%PDF-1.4\n";
    const std::unique_ptr<poppler::document> none(
        poppler::document::load_from_raw_data(Pdf, sizeof Pdf - 1));
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    Exiv2::XmpParser::initialize();
    // Every plugin for pictures, and the usual font for words in them.
    QByteArray bytes("no picture");
    QBuffer buffer(&bytes);
    QImageReader(&buffer).canRead();
    Q_UNUSED(QFontMetricsF(QFont()).horizontalAdvance(u'x'));
    Q_UNUSED(QStringDecoder("windows-1252").isValid());
}
