#pragma once

#include <QString>

#include "i18n/FilledText.h"
#include "model/ListFault.h"
#include "model/ProjectFault.h"
#include "platform/Failure.h"

/// The words of notices, in the language in force. A reason is a sentence of its own.
namespace tessarine
{

/// The text of "Notice.<key>" in the main window's section, filled in.
QString NoticeText(StringView key, const TextValues& values = {});

/// Why something could not be done to a file. Trouble without words in the language files is told in those of its
/// failure, without the path, which the notice has named.
QString ReasonOf(const Failure& failure, const String& path);

QString ReasonOf(ProjectFault fault);
QString ReasonOf(const ListFault& fault, const String& path);

}  // namespace tessarine
