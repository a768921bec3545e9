#pragma once

#include "reader/Findings.h"

#include <exiv2/exiv2.hpp>

// What the tags of a picture say of camera, place, time and subject.
void addPictureTags(const Exiv2::ExifData &exif, const Exiv2::IptcData &iptc,
                    const Exiv2::XmpData &xmp, Findings &findings);
