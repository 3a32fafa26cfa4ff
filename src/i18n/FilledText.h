#pragma once

#include <cstdint>
#include <optional>

#include <QString>

namespace tessarine
{

/// What stands in place of the placeholders of a text.
struct TextValues {
    std::optional<std::int64_t> d{};
    std::optional<QString> i{};
    std::optional<QString> s{};
};

/// A text with "%d", "%i" and "%s" filled in. What is put in is not searched for placeholders again. In place of an
/// empty text, which a language file lacks, the values stand alone, with blanks between them.
QString FilledText(const QString& text, const TextValues& values);

}  // namespace tessarine
