#pragma once

#include <QString>

#include "platform/String.h"

namespace tessarine
{

/// The model's text and the windows' text are both UTF-16; these change the type alone.
inline QString ToQt(StringView text)
{
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

inline String FromQt(const QString& text)
{
    return text.toStdU16String();
}

}  // namespace tessarine
