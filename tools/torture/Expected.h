#pragma once

#include <string>

/// What an undisturbed run makes of a deck, made sure of with readers that share nothing with the program.
namespace tessarine::torture
{

/// The text that runs look for, and what they put in its place.
inline constexpr const char* findText = "Fabrikam";
inline constexpr const char* replaceText = "Contoso";

/// The deck with all texts replaced and nothing else changed; the deck itself when it has no hit. The name's extension
/// counts. Raises std::runtime_error when the undisturbed run's result is not exactly that.
const std::string& ReplacedBytes(const std::string& name, const std::string& bytes);

/// In a few words, what is wrong with a content that is none of the expected ones.
std::string Describe(const std::string& bytes);

/// True when the help of a command tells of the option.
bool HasOption(const std::string& command, const std::string& option);

}  // namespace tessarine::torture
