#pragma once

#include <QString>

#include "platform/String.h"

/// The model's text and the windows' text are both UTF-16. These functions change the type and nothing else: every unit
/// comes through, also a lone surrogate, and a U+FEFF at the start, which QString::fromUtf16 would take for a mark.
namespace tessarine
{

/// A copy for the windows.
inline QString ToQt(StringView text)
{
    return QStringView(text).toString();
}

/// A copy for the model.
inline String FromQt(const QString& text)
{
    return text.toStdU16String();
}

}  // namespace tessarine
