#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessarine::builtin
{

/// An entry that a zip file did not have before: its two pieces of the file. Packed with deflate, named in UTF-8 and
/// dated 1 January 1980, so that the same content gives the same bytes.
struct NewEntry {
    /// `offset` is where `local` will stand in the file, below 4 GiB, as the content's size must be.
    NewEntry(std::string_view name, std::string_view content, std::uint64_t offset);

    std::string local;   ///< The local header, the name and the packed content.
    std::string record;  ///< Its record in the central directory.
};

}  // namespace tessarine::builtin
