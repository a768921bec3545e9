#pragma once

#include "platform/MetadataIndex.h"

#include <QStringList>

#include <algorithm>
#include <array>

// The values that "*" looks at, one by one, those that the index has words of: each text of each
// attribute, but not the content, and not what hundreds of files say alike of their format ("1.4",
// "None"). Pure; any thread.
template <typename Take> // void(const QString &text)
void eachSearchedText(const QList<MetadataAttribute> &attributes, Take &&take)
{
    constexpr std::array OfTheFormat { QLatin1StringView("kMDItemVersion"),
                                       QLatin1StringView("kMDItemSecurityMethod") };
    for (const MetadataAttribute &attribute : attributes) {
        const int type = attribute.value.typeId();
        if ((type != QMetaType::QString && type != QMetaType::QStringList)
            || std::ranges::find(OfTheFormat, attribute.name) != OfTheFormat.end())
            continue;
        for (const QString &text : attribute.value.toStringList())
            take(text);
    }
}
