#pragma once

#include <cstddef>
#include <filesystem>

/// The least that any program must do with a binary presentation, written without a line of the engine.
namespace tessarine::bench
{

/// What a find comes down to: reads the stream of the document and steps once over its records. Gives its bytes.
std::size_t WalkRecords(const std::filesystem::path& deck);

/// What a replace comes down to: the same, and the file's bytes written into a new one beside it, renamed over it. With
/// `flush` the new file is flushed to the disk before that and its folder afterwards.
void WriteRecordsAgain(const std::filesystem::path& deck, bool flush);

}  // namespace tessarine::bench
