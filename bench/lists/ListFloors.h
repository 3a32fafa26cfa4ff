#pragma once

#include <cstddef>
#include <string>

/// The least that any program must do with a list file, written without a line of the engine.
namespace tessarine::bench
{

/// Reads a file of separated text and passes over its fields, quotes respected. Returns how many there are.
std::size_t CountFields(const std::string& path);

/// Reads a workbook, takes its stream out of the compound file and steps from record to record. Returns how many there
/// are.
std::size_t CountRecords(const std::string& path);

/// Writes a file, flushes it to the disk and renames it to its name.
void WriteFlushed(const std::string& path, const std::string& bytes);

}  // namespace tessarine::bench
