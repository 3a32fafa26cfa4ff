#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Atoms that give a text its format in runs, one after the other, of a number of units each ([MS-PPT] 2.9.44). Taken
/// apart as far as an edit of the text needs: how many units, and the bytes of the rest.
namespace tessarine::builtin
{

struct FormatRun {
    std::uint32_t units = 0;
    std::string_view format;  ///< Of the bytes that it was read from.
};

/// StyleTextPropAtom ([MS-PPT] 2.9.44): the paragraphs' runs, then those of the characters. Both make up the text and
/// one unit more, for the end of its last paragraph; the characters of some files lack that unit.
struct StyleRuns {
    std::vector<FormatRun> paragraphs;
    std::vector<FormatRun> characters;
    std::string_view rest;  ///< Bytes behind, which nothing is known of.
};
/// For a text of that many units. Nothing where the content is no such atom's.
std::optional<StyleRuns> ReadStyleRuns(std::string_view content, std::size_t textUnits);

/// MasterTextPropAtom ([MS-PPT] 2.9.38): runs of paragraphs with the level of their outline.
std::optional<std::vector<FormatRun>> ReadLevelRuns(std::string_view content);

/// TextSpecialInfoAtom ([MS-PPT] 2.9.53): runs of characters with language and what the speller found.
std::optional<std::vector<FormatRun>> ReadSpecialInfoRuns(std::string_view content);

/// The atom's bytes.
void AppendRuns(std::string& content, const std::vector<FormatRun>& runs);

}  // namespace tessarine::builtin
