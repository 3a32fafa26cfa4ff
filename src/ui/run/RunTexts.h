#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>

#include <QString>

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

    /// What stands in place of the placeholders.
    struct Values {
        std::optional<std::int64_t> d{};
        std::optional<QString> i{};
        std::optional<QString> s{};
    };

    /// The text of a key with "%d", "%i" and "%s" filled in. What is put in is not searched for placeholders again.
    /// Where the language file lacks the key, the values stand alone, with blanks between them.
    QString Filled(StringView key, const Values& values) const;

private:
    mutable std::unordered_map<String, QString> texts_;
};

}  // namespace tessarine
