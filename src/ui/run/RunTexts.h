#pragma once

#include <unordered_map>

#include <QString>

#include "i18n/FilledText.h"
#include "platform/String.h"

namespace tessarine
{

/// The texts of the processing window in the language that is in force when each is first asked for. Read once: a
/// lookup in the language file takes too long for every row of a list.
class RunTexts
{
public:
    /// The text of a key; empty when the language file lacks it.
    const QString& operator()(StringView key) const;

    using Values = TextValues;

    /// The text of a key with "%d", "%i" and "%s" filled in. What is put in is not searched for placeholders again.
    /// Where the language file lacks the key, the values stand alone, with blanks between them.
    QString Filled(StringView key, const Values& values) const;

private:
    mutable std::unordered_map<String, QString> texts_;
};

}  // namespace tessarine
