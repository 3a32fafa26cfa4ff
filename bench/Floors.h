#pragma once

#include <cstddef>
#include <filesystem>

/// The least that any program must do for the same outcome, written without a line of the engine: reading the zip
/// directory, the needed entries' packed bytes, and inflating or deflating them. No XML, no search, no checks.
namespace tessarine::bench
{

/// What opening a deck comes down to: the directory, and the parts that name the slides.
/// Both find floors return the number of inflated bytes.
std::size_t InflateNames(const std::filesystem::path& deck);

/// What a find comes down to: the directory, and every slide and notes page.
std::size_t InflateSlidesAndNotes(const std::filesystem::path& deck);

/// What a replace comes down to: every slide and notes page inflated, those that hold a hit deflated again, and a new
/// file beside the old one with all other bytes as they were, renamed over it. With `flush` the new file is flushed to
/// the disk before that and its folder afterwards.
void DeflateHitsAgain(const std::filesystem::path& deck, bool flush);

}  // namespace tessarine::bench
