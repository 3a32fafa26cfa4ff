// make-unicode-tables CASE-FOLDING UNICODE-DATA OUTPUT: writes the tables of platform/UnicodeTables.h as C++.
// The input are CaseFolding.txt and UnicodeData.txt of the Unicode Character Database (UAX #44).
#include <algorithm>
#include <array>
#include <cstdint>
#include <exception>
#include <fstream>
#include <functional>
#include <iomanip>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace
{

using Mapping = std::map<char32_t, char32_t>;

struct Range {
    char32_t first;
    char32_t last;
};

/// As in platform/UnicodeTables.h.
constexpr std::size_t blockSize = 64;
constexpr char32_t firstBeyondUnits = 0x10000;

/// The fields of a line, without blanks at their ends; none for a line that is a comment.
std::vector<std::string> FieldsOf(std::string line)
{
    line.erase(std::min(line.find('#'), line.size()));
    std::vector<std::string> fields;
    std::istringstream rest(line);
    for (std::string field; std::getline(rest, field, ';');) {
        const std::size_t begin = std::min(field.find_first_not_of(" \r"), field.size());
        const std::size_t end = field.find_last_not_of(" \r") + 1;
        fields.push_back(begin < end ? field.substr(begin, end - begin) : "");
    }
    return fields;
}

/// Hands each line's fields to `take`. A file without any is an error.
void ReadLines(const std::string& path, std::size_t fieldCount,
               const std::function<void(const std::vector<std::string>&)>& take)
{
    std::ifstream file(path);
    std::size_t count = 0;
    for (std::string line; std::getline(file, line);) {
        const std::vector<std::string> fields = FieldsOf(line);
        if (fields.size() < fieldCount)
            continue;
        take(fields);
        ++count;
    }
    if (count < 1000)
        throw std::runtime_error(path + " is missing or cut off");
}

char32_t CodePoint(const std::string& digits)
{
    return static_cast<char32_t>(std::stoul(digits, nullptr, 16));
}

/// Keeps a mapping that leaves the length in UTF-16 as it is.
void Keep(Mapping& mapping, char32_t from, char32_t to)
{
    if ((from < firstBeyondUnits) == (to < firstBeyondUnits) && from != to)
        mapping[from] = to;
}

/// Simple case folding: the statuses C (common) and S (simple). F changes lengths, and T is for Turkish.
Mapping ReadFolding(const std::string& path)
{
    Mapping folding;
    ReadLines(path, 3, [&](const std::vector<std::string>& fields) {
        if (fields[1] == "C" || fields[1] == "S")
            Keep(folding, CodePoint(fields[0]), CodePoint(fields[2]));
    });
    return folding;
}

struct Characters {
    Mapping upper;
    std::vector<Range> word;  // letters, marks and decimal digits, from low to high
};

Characters ReadCharacters(const std::string& path)
{
    Characters characters;
    char32_t first = 0;
    ReadLines(path, 14, [&](const std::vector<std::string>& fields) {
        const char32_t codePoint = CodePoint(fields[0]);
        if (!fields[12].empty())
            Keep(characters.upper, codePoint, CodePoint(fields[12]));

        // A range of characters without names of their own is two lines: "<..., First>" and "<..., Last>".
        const std::string& name = fields[1];
        if (!name.ends_with(", Last>"))
            first = codePoint;
        const std::string& category = fields[2];
        if (name.ends_with(", First>") || !(category[0] == 'L' || category[0] == 'M' || category == "Nd"))
            return;
        if (!characters.word.empty() && characters.word.back().last + 1 == first)
            characters.word.back().last = codePoint;
        else
            characters.word.push_back({first, codePoint});
    });
    return characters;
}

std::ostream& operator<<(std::ostream& out, const Range& range)
{
    return out << "{" << std::uint32_t{range.first} << ", " << std::uint32_t{range.last};
}

/// One mapping of units as two tables (see UnitMapping), equal blocks held once.
void WriteUnits(std::ostream& out, const std::string& name, const Mapping& mapping)
{
    using Block = std::array<std::uint16_t, blockSize>;
    std::vector<Block> blocks;
    out << "constexpr std::uint8_t " << name << "Blocks[] = {";
    for (std::size_t begin = 0; begin < firstBeyondUnits; begin += blockSize) {
        Block block{};
        for (auto at = mapping.lower_bound(static_cast<char32_t>(begin));
             at != mapping.end() && at->first < begin + blockSize; ++at)
            block[at->first - begin] = static_cast<std::uint16_t>(at->second - at->first);
        const auto known = std::find(blocks.begin(), blocks.end(), block);
        out << known - blocks.begin() << ',';
        if (known == blocks.end())
            blocks.push_back(block);
    }
    out << "};\n";
    if (blocks.size() > 256)
        throw std::runtime_error("too many blocks for a byte");

    out << "constexpr char16_t " << name << "Shifts[][unicodeBlockSize] = {";
    for (const Block& block : blocks) {
        out << "{";
        for (const std::uint16_t shift : block)
            out << shift << ',';
        out << "},\n";
    }
    out << "};\n";
}

/// The mappings beyond single units, neighbours with one distance as a range.
void WritePairs(std::ostream& out, const std::string& name, const Mapping& mapping)
{
    struct Shift {
        Range range;
        std::int64_t by;
    };
    std::vector<Shift> shifts;
    for (auto at = mapping.lower_bound(firstBeyondUnits); at != mapping.end(); ++at) {
        const std::int64_t by = std::int64_t{at->second} - std::int64_t{at->first};
        if (!shifts.empty() && shifts.back().range.last + 1 == at->first && shifts.back().by == by)
            shifts.back().range.last = at->first;
        else
            shifts.push_back({{at->first, at->first}, by});
    }
    out << "constexpr CodePointShift " << name << "Pairs[] = {";
    for (const Shift& shift : shifts)
        out << shift.range << ", " << std::dec << shift.by << std::hex << "},\n";
    out << "};\n";
}

void WriteMapping(std::ostream& out, const std::string& name, const Mapping& mapping)
{
    WriteUnits(out, name, mapping);
    WritePairs(out, name, mapping);
}

void MakeTables(const std::string& foldingPath, const std::string& dataPath, const std::string& outputPath)
{
    const Mapping folding = ReadFolding(foldingPath);
    const Characters characters = ReadCharacters(dataPath);

    std::ofstream out(outputPath);
    out.exceptions(std::ios::failbit | std::ios::badbit);
    out << std::hex << std::showbase
        << "#include \"platform/UnicodeTables.h\"\n\nnamespace tessarine\n{\n\nnamespace\n{\n\n";
    WriteMapping(out, "fold", folding);
    WriteMapping(out, "upper", characters.upper);
    out << "constexpr CodePointRange wordRanges[] = {";
    for (const Range& range : characters.word)
        out << range << "},\n";
    out << "};\n\n}  // namespace\n\n"
           "const CaseMapping simpleFolding{foldBlocks, foldShifts, foldPairs};\n"
           "const CaseMapping simpleUpperCase{upperBlocks, upperShifts, upperPairs};\n"
           "const std::span<const CodePointRange> wordCharacters{wordRanges};\n\n}  // namespace tessarine\n"
        << std::flush;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "usage: make-unicode-tables CASE-FOLDING UNICODE-DATA OUTPUT\n";
        return 2;
    }
    try {
        MakeTables(argv[1], argv[2], argv[3]);
    } catch (const std::exception& error) {
        std::cerr << "make-unicode-tables: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
