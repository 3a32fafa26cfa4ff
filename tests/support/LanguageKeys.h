#pragma once

#include <string>
#include <vector>

namespace tessarine::test
{

/// What a language file says for a key.
enum class LanguageEntry {
    Words,        ///< A text, in every language.
    WordsOrNone,  ///< A tip that a control may do without; in all languages or in none.
    None,         ///< Nothing: the control shows a picture, or is there for its frame alone.
    Separator,    ///< "-", which makes a menu item a line.
};

/// One text that the program asks a language file for.
struct LanguageKey {
    std::string section;
    std::string key;
    LanguageEntry entry = LanguageEntry::Words;
    std::string placeholders = {};  ///< Letters of the placeholders that it holds, each once: "di" for %d and %i.
};

/// All texts that the program asks for, window by window: those of the controls, then those asked for by name.
std::vector<LanguageKey> LanguageKeys();

}  // namespace tessarine::test
