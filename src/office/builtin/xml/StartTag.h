#pragma once

#include <string>
#include <string_view>

/// Changes to the bytes of a start tag or an empty-element tag, which begin with its "<". What is not changed keeps its
/// bytes.
namespace tessarine::builtin
{

/// Gives an attribute a value (not escaped yet), under its qualified name. An attribute that is not there is added as
/// the first one; "" takes it away, together with one blank in front of it.
void PutAttribute(std::string& tag, std::string_view qualifiedName, std::string_view value);

/// Inserts attributes, each with a blank in front, right after the element's name.
void InsertAttributes(std::string& tag, std::string_view attributes);

}  // namespace tessarine::builtin
