#include "support/BinaryProperties.h"

#include "support/BinaryRecords.h"

namespace tessarine::test::ppt
{

namespace
{

constexpr int Utf16CodePage = 1200;

std::uint32_t SizeOf(const std::string& bytes)
{
    return static_cast<std::uint32_t>(bytes.size());
}

std::string Padded(std::string bytes)
{
    bytes.resize((bytes.size() + 3) / 4 * 4);
    return bytes;
}

std::string FormatId(SectionKind kind)
{
    if (kind == SectionKind::Summary)
        return {"\xE0\x85\x9F\xF2\xF9\x4F\x68\x10\xAB\x91\x08\x00\x2B\x27\xB3\xD9", 16};
    const std::string first = kind == SectionKind::DocumentSummary ? "\x02" : "\x05";
    return first + std::string("\xD5\xCD\xD5\x9C\x2E\x1B\x10\x93\x97\x08\x00\x2B\x2C\xF9\xAE", 15);
}

}  // namespace

std::string TextValue(const std::string& bytes)
{
    return Padded(Long(0x1E) + Long(SizeOf(bytes) + 1) + bytes + '\0');
}

std::string WideValue(std::u16string_view text)
{
    return Padded(Long(0x1F) + Long(static_cast<std::uint32_t>(text.size() + 1)) + Wide(text) + Short(0));
}

std::string ShortValue(int value)
{
    return Padded(Long(2) + Short(static_cast<std::uint32_t>(value)));
}

std::string NumberValue(int value)
{
    return Long(3) + Long(static_cast<std::uint32_t>(value));
}

std::string RealValue(double value)
{
    return Long(5) + Double(value);
}

std::string TruthValue(bool value)
{
    return Padded(Long(11) + Short(value ? 0xFFFF : 0));
}

std::string TimeValue(std::uint64_t steps)
{
    return Long(0x40) + LongLong(steps);
}

std::string BlobValue(const std::string& bytes)
{
    return Padded(Long(0x41) + Long(SizeOf(bytes)) + bytes);
}

std::string TextsValue(const std::vector<std::string>& texts)
{
    // The texts of a vector stand close together where a single one is filled up: so PowerPoint writes them.
    std::string value = Long(0x101E) + Long(static_cast<std::uint32_t>(texts.size()));
    for (const auto& text : texts)
        value += Long(SizeOf(text) + 1) + text + '\0';
    return Padded(value);
}

std::string LinksValue(const std::vector<std::pair<std::u16string, std::u16string>>& links)
{
    // Of six values the first four say what uses a link; real files have 7, 6, 0, 7 for those of texts.
    std::string blob = Long(static_cast<std::uint32_t>(6 * links.size()));
    for (const auto& [address, location] : links)
        blob += NumberValue(7) + NumberValue(6) + NumberValue(0) + NumberValue(7) + WideValue(address) +
                WideValue(location);
    return BlobValue(blob);
}

PropertySection& PropertySection::CodePage(int codePage)
{
    codePage_ = codePage;
    return *this;
}

PropertySection& PropertySection::Put(std::uint32_t id, std::string value)
{
    values_.emplace_back(id, std::move(value));
    return *this;
}

PropertySection& PropertySection::Named(const std::string& name, std::string value)
{
    names_.emplace_back(nextNamed_, name);
    return Put(nextNamed_++, std::move(value));
}

std::string PropertySection::Dictionary() const
{
    std::string dictionary = Long(static_cast<std::uint32_t>(names_.size()));
    for (const auto& [id, name] : names_) {
        // Counts are in characters, and only names in UTF-16 are filled up.
        if (codePage_ == Utf16CodePage)
            dictionary += Long(id) + Long(SizeOf(name) / 2 + 1) + Padded(name + Short(0));
        else
            dictionary += Long(id) + Long(SizeOf(name) + 1) + name + '\0';
    }
    return Padded(dictionary);
}

std::string PropertySection::Bytes() const
{
    auto all = values_;
    if (codePage_ != 0)
        all.insert(all.begin(), {1, ShortValue(codePage_)});
    if (!names_.empty())
        all.insert(all.begin(), {0, Dictionary()});
    const std::size_t start = 8 + 8 * all.size();
    std::string places;
    std::string values;
    for (const auto& [id, value] : all) {
        places += Long(id) + Long(static_cast<std::uint32_t>(start + values.size()));
        values += value;
    }
    return Long(static_cast<std::uint32_t>(start + values.size())) + Long(static_cast<std::uint32_t>(all.size())) +
           places + values;
}

std::string PropertySetStream(const std::vector<std::pair<SectionKind, PropertySection>>& sections)
{
    std::string head = Short(0xFFFE) + Short(0) + Long(0x00020006) + std::string(16, '\0') +
                       Long(static_cast<std::uint32_t>(sections.size()));
    std::size_t offset = head.size() + 20 * sections.size();
    std::string bodies;
    for (const auto& [kind, section] : sections) {
        head += FormatId(kind) + Long(static_cast<std::uint32_t>(offset + bodies.size()));
        bodies += section.Bytes();
    }
    return head + bodies;
}

}  // namespace tessarine::test::ppt
