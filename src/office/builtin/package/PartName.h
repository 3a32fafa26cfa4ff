#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Names of parts and how relationships point to them (ECMA-376 part 2, 8.1 and 9.3).
namespace tessarine::builtin
{

/// The form in which part names are compared: no leading slash, slashes for backslashes, ASCII letters in lower case.
/// Some programs write the slashes and the letters otherwise than the part's name has them.
std::string ComparableName(std::string_view name);

/// Hashing and comparing names as ComparableName would have them, without making it.
struct PartNameHash {
    std::size_t operator()(std::string_view name) const;
};
struct PartNameEqual {
    bool operator()(std::string_view left, std::string_view right) const;
};

/// The folder of a part: "ppt/slides/" for "ppt/slides/slide1.xml", always with its slash; "" at the root.
/// Part names have slashes on all systems.
std::string_view FolderOfPart(std::string_view partName);

/// What follows the last dot of a part's name; "" without one.
std::string_view ExtensionOf(std::string_view partName);

/// "ppt/slides/_rels/slide1.xml.rels" for "ppt/slides/slide1.xml"; "_rels/.rels" for the package ("").
std::string RelationshipPartName(std::string_view partName);

/// The part name that an internal target stands for, seen from the part that holds it: absolute with a leading slash,
/// otherwise relative to the part's folder; "." and ".." are resolved and never lead above the root. Percent escapes
/// stay.
std::string ResolveTarget(std::string_view sourcePart, std::string_view target);

/// The text with its percent escapes decoded. A percent sign that two hexadecimal digits don't follow stays as it is.
std::string DecodePercent(std::string_view text);

}  // namespace tessarine::builtin
