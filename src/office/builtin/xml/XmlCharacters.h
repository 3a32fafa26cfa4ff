#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

/// Which characters XML 1.0 can hold (2.2), and how references stand for them (4.1).
namespace tessarine::builtin
{

/// A character or entity reference.
struct Reference {
    char32_t codePoint;  ///< Up to U+10FFFF or beyond; need not be a character that XML can hold.
    std::size_t length;  ///< In bytes, from "&" to ";".
};

/// The reference at the start of a text; nothing when there is none. Of entities only those five are known that need no
/// declaration, since documents with declarations are refused.
std::optional<Reference> ReadReference(std::string_view text);

/// Whether an "&" means something: it does not in comments, CDATA sections and processing instructions.
enum class Ampersands { BeginReferences, AreText };

/// How far a look at a part's characters went.
struct CharacterCheck {
    std::size_t end;              ///< After the last character, or where the fault is.
    const char* fault = nullptr;  ///< What is wrong there, for a person; null when all is well.
};

/// Looks at the one character of a part's UTF-8 that begins at an offset within it: no control character other than
/// white space, no bytes that are no UTF-8, no U+FFFE and U+FFFF, no "&" without a known entity or the number of a
/// character that XML can hold.
CharacterCheck CheckCharacter(std::string_view xml, std::size_t at, Ampersands ampersands);

/// Looks at all characters that begin in [from, to), and perhaps at some after these; a character begins at `from`.
/// Without a fault the end is at `to` or beyond.
CharacterCheck CheckCharacters(std::string_view xml, std::size_t from, std::size_t to, Ampersands ampersands);

}  // namespace tessarine::builtin
