#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <span>
#include <string_view>

#include "platform/String.h"
#include "saving/ReplacementFile.h"

// Saves in short, and the state of what they saved.

namespace tessarine
{

/// A user that the tests never run as.
inline constexpr uid_t stranger = 12345;

inline std::span<const std::byte> Bytes(std::string_view text)
{
    return std::as_bytes(std::span(text));
}

/// Saves a file whole; one that is missing is made.
inline void Replace(StringView path, std::string_view text, const SaveTerms& terms = {})
{
    ReplacementFile file(path, ReplacementFile::Missing::IsMade, terms);
    file.Write(Bytes(text));
    file.Commit();
}

inline struct stat StatusOf(StringView path)
{
    struct stat status = {};
    stat(ToUtf8(path).c_str(), &status);
    return status;
}

}  // namespace tessarine
