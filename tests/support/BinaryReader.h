#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/String.h"

/// A small reader of binary decks for tests, for those that a builder or an engine wrote without fault. What is wrong
/// with the records is a std::runtime_error.
namespace tessarine::test::ppt
{

/// The little-endian number of `size` bytes at a place; std::runtime_error outside.
std::uint32_t At(const std::string& bytes, std::size_t at, std::size_t size = 4);

struct BinaryRecord {
    std::uint32_t version = 0;
    std::uint32_t instance = 0;
    std::uint32_t type = 0;
    std::string data{};

    bool operator==(const BinaryRecord&) const = default;
};

/// The records of a stretch of bytes, which they fill to the end.
std::vector<BinaryRecord> RecordsOf(const std::string& bytes);

/// All records of a type, at any depth, in order.
std::vector<BinaryRecord> FindRecords(const std::string& bytes, std::uint32_t type);

/// Where the header of the first record of a type stands, at any depth; std::runtime_error when there is none.
std::size_t PlaceOfRecord(const std::string& bytes, std::uint32_t type);

/// The data of the first record of a type; std::runtime_error when there is none.
std::string FirstRecord(const std::string& bytes, std::uint32_t type);

/// The bytes of each live persist object, by its id, through all edits from the one that the current user names.
std::map<std::uint32_t, std::string> LiveObjects(const std::string& file);

/// How many edits the file has.
int CountOfEdits(const std::string& file);

/// The live slides in order, as bytes of their containers.
std::vector<std::string> SlidesOf(const std::string& file);

/// The texts of a slide's shapes in order of the drawing, those of the outline included; `number` counts from 1.
std::vector<String> TextsOf(const std::string& file, int number);

/// The characters of all text atoms below.
std::vector<String> CharactersIn(const std::string& records);

/// What is wrong with the counts beside the texts below: style runs, special info, spans of links, bookmarks,
/// metacharacters. Nothing for a deck without fault.
std::vector<std::string> TextFaults(const std::string& records);

}  // namespace tessarine::test::ppt
