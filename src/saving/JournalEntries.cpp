#include "saving/JournalEntries.h"

#include <array>
#include <charconv>
#include <span>
#include <string_view>

#include "platform/NativePath.h"

namespace tessarine
{

namespace
{

constexpr std::string_view fileKind = "file";
constexpr std::string_view contentKind = "content";
constexpr std::string_view writeKind = "write";

constexpr std::size_t digitsOfBlock = 8;

/// A mode beyond this is none: twelve bits, on Windows the attributes of a file.
#ifdef _WIN32
constexpr std::uint32_t largestMode = 0x7FFFFFFF;
#else
constexpr std::uint32_t largestMode = 07777;
#endif

template <class Number>
void Put(JournalFields& fields, Number number, int base = 10)
{
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), number, base).ptr;
    fields.emplace_back(digits.begin(), end);
}

void Put(JournalFields& fields, const timespec& time)
{
    Put(fields, std::int64_t{time.tv_sec});
    Put(fields, std::int64_t{time.tv_nsec});
}

void Put(JournalFields& fields, const FileMark& mark)
{
    Put(fields, mark.file);
    Put(fields, mark.size);
    Put(fields, mark.lastWrite);
}

/// Takes values from a line, one after the other. Once one can't be right, or is missing, `isGood` stays false.
class FieldsOfLine
{
public:
    FieldsOfLine(const JournalFields& fields, std::string_view kind) : rest_(fields)
    {
        isGood = !rest_.empty() && rest_.front() == kind;
        if (isGood)
            rest_ = rest_.subspan(1);
    }

    bool isGood = false;
    bool IsAtEnd() const { return rest_.empty(); }

    std::string Text()
    {
        if (rest_.empty()) {
            isGood = false;
            return {};
        }
        const std::string& text = rest_.front();
        rest_ = rest_.subspan(1);
        return text;
    }

    /// A path from the root on, which alone means the same for every process.
    std::string Path()
    {
        std::string path = Text();
        isGood = isGood && IsFullPath(path) && path.find('\0') == std::string::npos;
        return path;
    }

    template <class Number>
    Number Get(int base = 10)
    {
        const std::string text = Text();
        Number number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
        isGood = isGood && error == std::errc() && end == text.data() + text.size();
        return number;
    }

    timespec Time()
    {
        timespec time{};
        time.tv_sec = static_cast<decltype(time.tv_sec)>(Get<std::int64_t>());
        time.tv_nsec = static_cast<decltype(time.tv_nsec)>(Get<std::int64_t>());
        isGood = isGood && time.tv_nsec >= 0 && time.tv_nsec < 1'000'000'000;
        return time;
    }

    FileMark Mark()
    {
        FileMark mark;
        mark.file = Get<std::uint64_t>();
        mark.size = Get<std::uint64_t>();
        mark.lastWrite = Time();
        return mark;
    }

private:
    std::span<const std::string> rest_;
};

std::string TextOfBlocks(const std::vector<std::uint32_t>& blocks)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    text.reserve(blocks.size() * digitsOfBlock);
    for (const std::uint32_t checksum : blocks)
        for (int shift = 28; shift >= 0; shift -= 4)
            text += digits[(checksum >> shift) & 0xF];
    return text;
}

/// The blocks of a file of this size.
std::optional<std::vector<std::uint32_t>> BlocksOf(std::string_view text, std::uint64_t size)
{
    // Compared without a sum, which a size near the largest number would overflow.
    const std::uint64_t count =
        size / WriteEntry::BlockLength + (size % WriteEntry::BlockLength != 0 ? std::uint64_t{1} : 0);
    if (text.size() % digitsOfBlock != 0 || text.size() / digitsOfBlock != count)
        return std::nullopt;
    std::vector<std::uint32_t> blocks;
    for (; !text.empty(); text.remove_prefix(digitsOfBlock)) {
        std::uint32_t checksum = 0;
        const char* const end = text.data() + digitsOfBlock;
        if (std::from_chars(text.data(), end, checksum, 16).ptr != end)
            return std::nullopt;
        blocks.push_back(checksum);
    }
    return blocks;
}

}  // namespace

bool FileMark::operator==(const FileMark& other) const
{
    return file == other.file && size == other.size && lastWrite.tv_sec == other.lastWrite.tv_sec &&
           lastWrite.tv_nsec == other.lastWrite.tv_nsec;
}

JournalFields FileEntry::Fields() const
{
    JournalFields fields{std::string(fileKind), path};
    Put(fields, mark);
    Put(fields, mode, 8);
    if (dates) {
        Put(fields, dates->lastAccess);
        Put(fields, dates->lastWrite);
    }
    return fields;
}

std::optional<FileEntry> FileEntry::From(const JournalFields& fields)
{
    FieldsOfLine line(fields, fileKind);
    FileEntry entry;
    entry.path = line.Path();
    entry.mark = line.Mark();
    entry.mode = line.Get<std::uint32_t>(8);
    if (!line.IsAtEnd()) {
        const timespec lastAccess = line.Time();
        entry.dates = {lastAccess, line.Time()};
    }
    if (!line.isGood || !line.IsAtEnd() || entry.mode > largestMode)
        return std::nullopt;
    return entry;
}

JournalFields ContentEntry::Fields() const
{
    JournalFields fields{std::string(contentKind)};
    Put(fields, mark);
    return fields;
}

std::optional<ContentEntry> ContentEntry::From(const JournalFields& fields)
{
    FieldsOfLine line(fields, contentKind);
    const ContentEntry entry{line.Mark()};
    if (!line.isGood || !line.IsAtEnd())
        return std::nullopt;
    return entry;
}

JournalFields WriteEntry::Fields() const
{
    JournalFields fields{std::string(writeKind), path};
    Put(fields, mark);
    fields.push_back(copy);
    Put(fields, copyMark);
    fields.push_back(TextOfBlocks(oldBlocks));
    fields.push_back(TextOfBlocks(newBlocks));
    return fields;
}

std::optional<WriteEntry> WriteEntry::From(const JournalFields& fields)
{
    FieldsOfLine line(fields, writeKind);
    WriteEntry entry;
    entry.path = line.Path();
    entry.mark = line.Mark();
    entry.copy = line.Path();
    entry.copyMark = line.Mark();
    auto oldBlocks = BlocksOf(line.Text(), entry.mark.size);
    auto newBlocks = BlocksOf(line.Text(), entry.copyMark.size);
    if (!line.isGood || !line.IsAtEnd() || !oldBlocks || !newBlocks)
        return std::nullopt;
    entry.oldBlocks = *std::move(oldBlocks);
    entry.newBlocks = *std::move(newBlocks);
    return entry;
}

}  // namespace tessarine
