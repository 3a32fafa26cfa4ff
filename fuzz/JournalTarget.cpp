// Journals of killed runs. The input is a journal as it is, and once more with a checksum put right for each line,
// because no fuzzer guesses one: there its lines are lines, and tabs part their fields.
#include <cstdint>
#include <string>
#include <string_view>

#include "Require.h"
#include "saving/JournalEntries.h"
#include "saving/JournalText.h"

namespace
{

using namespace tessarine;

/// What a line says is said again by the line that is made of it.
template <class Entry>
void ReadEntry(const JournalFields& fields)
{
    const auto entry = Entry::From(fields);
    if (!entry)
        return;
    const auto again = Entry::From(entry->Fields());
    fuzz::Require(again && again->Fields() == entry->Fields(), "an entry that is read can be written and read");
}

void ReadEntries(const std::vector<JournalFields>& lines)
{
    for (const JournalFields& line : lines) {
        ReadEntry<FileEntry>(line);
        ReadEntry<ContentEntry>(line);
        ReadEntry<WriteEntry>(line);
    }
}

JournalFields FieldsOf(std::string_view line)
{
    JournalFields fields(1);
    for (const char character : line) {
        if (character == '\t')
            fields.emplace_back();
        else
            fields.back() += character;
    }
    return fields;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    ReadEntries(ReadJournal(input));

    std::vector<JournalFields> lines;
    std::string right;
    for (std::size_t at = 0; at < input.size();) {
        const std::size_t end = std::min(input.find('\n', at), input.size());
        lines.push_back(FieldsOf(input.substr(at, end - at)));
        right += JournalLine(lines.back());
        at = end + 1;
    }
    fuzz::Require(ReadJournal(right) == lines, "lines that are written can be read");
    ReadEntries(lines);
    return 0;
}
