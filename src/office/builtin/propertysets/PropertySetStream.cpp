#include "office/builtin/propertysets/PropertySetStream.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <set>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/propertysets/SetBytes.h"

namespace tessarine::builtin
{

namespace
{

// The parts of a stream ([MS-OLEPS] 2.21): a header, a row for each section; in a section ([MS-OLEPS] 2.20) its size
// and the number of its entries, then an entry for each value, with id and offset in the section.
constexpr std::size_t headerBytes = 28;
constexpr std::size_t rowBytes = 20;
constexpr std::size_t formatBytes = 16;
constexpr std::size_t entryBytes = 8;
constexpr std::size_t sectionHeaderBytes = 8;

// Real streams have two sections at most, with some dozens of properties.
constexpr std::size_t mostSections = 64;
constexpr std::size_t mostProperties = 65535;

constexpr std::uint16_t byteOrderMark = 0xFFFE;
constexpr std::uint32_t codePageId = 1;

std::size_t RoundedUp(std::size_t size)
{
    return (size + 3) & ~std::size_t{3};
}

}  // namespace

PropertySetStream::PropertySetStream(std::string bytes, std::string_view name) : bytes_(std::move(bytes)), name_(name)
{
    if (bytes_.size() < headerBytes || ShortAt(bytes_, 0) != byteOrderMark)
        throw Damage(name_, "no document properties");
    ReadSections();
    for (Section& section : sections_)
        ReadTable(section);
}

void PropertySetStream::ReadSections()
{
    const std::size_t count = LongAt(bytes_, headerBytes - 4);
    if (count > (bytes_.size() - headerBytes) / rowBytes)
        throw Damage(name_, "it ends in the list of its sections");
    if (count > mostSections)
        throw Damage(name_, "it has too many sections");
    for (std::size_t row = headerBytes; row < headerBytes + count * rowBytes; row += rowBytes) {
        Section section;
        std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(row), formatBytes, section.format.begin());
        section.begin = LongAt(bytes_, row + formatBytes);
        if (section.begin < headerBytes + count * rowBytes || section.begin > bytes_.size() ||
            bytes_.size() - section.begin < sectionHeaderBytes)
            throw Damage(name_, "a section lies outside of it", row);
        sections_.push_back(std::move(section));
    }

    // A section ends where the next one begins, be it the next in the list or not.
    std::vector<std::size_t> begins;
    for (const Section& section : sections_)
        begins.push_back(section.begin);
    std::ranges::sort(begins);
    for (Section& section : sections_) {
        const auto next = std::ranges::upper_bound(begins, section.begin);
        if (std::distance(std::ranges::lower_bound(begins, section.begin), next) > 1)
            throw Damage(name_, "two sections begin at the same place", section.begin);
        section.end = next == begins.end() ? bytes_.size() : *next;
    }
}

void PropertySetStream::ReadTable(Section& section)
{
    section.entries = LongAt(bytes_, section.begin + 4);
    if (section.end - section.begin < sectionHeaderBytes ||
        section.entries > (section.end - section.begin - sectionHeaderBytes) / entryBytes)
        throw Damage(name_, "a section ends in the list of its properties", section.begin);

    if (section.entries > mostProperties)
        throw Damage(name_, "it has too many properties", section.begin);

    std::vector<std::size_t> begins;
    for (std::size_t entry = section.begin + sectionHeaderBytes; entry < section.TableEnd(); entry += entryBytes) {
        const std::size_t offset = LongAt(bytes_, entry + 4);
        const std::size_t begin = section.begin + offset;
        if (begin < section.TableEnd() || begin >= section.end)
            continue;  // this value is lost; the others need not be
        section.properties.push_back({.id = LongAt(bytes_, entry), .begin = begin});
        begins.push_back(begin);
    }
    std::ranges::sort(begins);

    // The size that the section gives itself leaves out what is of no section, unless values lie beyond it.
    const std::size_t size = LongAt(bytes_, section.begin);
    if (size <= section.end - section.begin && section.begin + size >= section.TableEnd() &&
        (begins.empty() || begins.back() < section.begin + size))
        section.end = section.begin + size;

    std::vector<Property> properties;
    std::set<std::size_t> places;
    for (Property& property : section.properties) {
        const auto next = std::ranges::upper_bound(begins, property.begin);
        property.end = next == begins.end() ? section.end : *next;
        property.isShared = std::distance(std::ranges::lower_bound(begins, property.begin), next) > 1;
        if (places.insert(property.begin).second && section.byId.emplace(property.id, properties.size()).second)
            properties.push_back(property);
    }
    section.properties = std::move(properties);

    // A number of 16 bits, though its type has a sign: 65001 is stored as -535.
    if (const Property* codePage = FindProperty(section, codePageId))
        section.codePage = ShortAt(bytes_, codePage->begin + 4);
}

const PropertySetStream::Section* PropertySetStream::Find(const FormatId& format) const
{
    const auto found = std::ranges::find(sections_, format, &Section::format);
    return found == sections_.end() ? nullptr : &*found;
}

const PropertySetStream::Property* PropertySetStream::FindProperty(const Section& section, std::uint32_t id)
{
    const auto found = section.byId.find(id);
    return found == section.byId.end() ? nullptr : &section.properties[found->second];
}

std::optional<std::string_view> PropertySetStream::Value(const Section& section, std::uint32_t id) const
{
    if (const auto edit = edits_.find({section.begin, id}); edit != edits_.end())
        return edit->second.value;
    const Property* const property = FindProperty(section, id);
    if (property == nullptr)
        return std::nullopt;
    return std::string_view(bytes_).substr(property->begin, property->end - property->begin);
}

void PropertySetStream::Put(const Section& section, std::uint32_t id, std::string value, std::size_t replaced)
{
    const Property* const property = FindProperty(section, id);
    if (property != nullptr && property->isShared)
        throw Failure(FailureNumber::Unspecified,
                      u"The document property can't be changed: another one has the same bytes in the file");
    const auto [edit, isFirst] = edits_.try_emplace({section.begin, id});
    edit->second.value = std::move(value);
    if (isFirst)
        edit->second.replaced = replaced;
}

std::string PropertySetStream::NewSection(const Section& section) const
{
    /// A value that another one takes the place of.
    struct Splice {
        std::size_t begin;
        std::size_t end;
        std::string_view value;
        std::size_t padding;
    };
    std::vector<Splice> splices;
    std::vector<std::pair<std::uint32_t, std::string_view>> added;
    for (auto edit = edits_.lower_bound({section.begin, 0}); edit != edits_.end() && edit->first.first == section.begin;
         ++edit) {
        const std::string& value = edit->second.value;
        const Property* const property = FindProperty(section, edit->first.second);
        if (property == nullptr) {
            added.emplace_back(edit->first.second, value);
            continue;
        }
        // What follows moves by a multiple of four bytes, so that it stays as aligned as it was.
        const std::size_t old = std::min(RoundedUp(edit->second.replaced), property->end - property->begin);
        splices.push_back({property->begin, property->begin + old, value, (old - value.size()) & 3});
    }
    std::ranges::sort(splices, {}, &Splice::begin);

    std::string values;
    std::size_t copied = section.TableEnd();
    std::vector<std::pair<std::size_t, std::size_t>> moves;  // where old bytes go on, and how far they have moved
    std::size_t moved = added.size() * entryBytes;           // wraps below zero, and so do the sums with it
    moves.emplace_back(0, moved);
    for (const Splice& splice : splices) {
        values.append(bytes_, copied, splice.begin - copied);
        values += splice.value;
        values.append(splice.padding, '\0');
        copied = splice.end;
        moved += splice.value.size() + splice.padding - (splice.end - splice.begin);
        moves.emplace_back(splice.begin + 1, moved);  // the value itself is where it was
    }
    values.append(bytes_, copied, section.end - copied);

    std::string table = bytes_.substr(section.begin, section.TableEnd() - section.begin);
    for (std::size_t entry = sectionHeaderBytes; entry < table.size(); entry += entryBytes) {
        const std::size_t offset = LongAt(table, entry + 4);
        const std::size_t begin = section.begin + offset;
        if (begin < section.TableEnd() || begin >= section.end)
            continue;
        const auto next = std::ranges::upper_bound(moves, begin, {}, &std::pair<std::size_t, std::size_t>::first);
        PutLong(table, entry + 4, offset + std::prev(next)->second);
    }
    for (const auto& [id, value] : added) {
        const std::size_t tableBytes = section.TableEnd() - section.begin + added.size() * entryBytes;
        values.resize(RoundedUp(tableBytes + values.size()) - tableBytes);
        AppendNumber(table, id, 4);
        AppendNumber(table, tableBytes + values.size(), 4);
        values += value;
        values.resize(RoundedUp(tableBytes + values.size()) - tableBytes);
    }
    const std::size_t grown = table.size() + values.size() - (section.end - section.begin);
    PutLong(table, 0, LongAt(table, 0) + grown);
    PutLong(table, 4, section.entries + added.size());
    return table + values;
}

std::string PropertySetStream::Bytes() const
{
    std::vector<std::size_t> order(sections_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, {}, [&](std::size_t index) { return sections_[index].begin; });

    std::string bytes;
    std::size_t copied = 0;
    std::vector<std::size_t> begins(sections_.size());
    for (const std::size_t index : order) {
        const Section& section = sections_[index];
        bytes.append(bytes_, copied, section.begin - copied);
        begins[index] = bytes.size();
        bytes += NewSection(section);
        copied = section.end;
    }
    bytes.append(bytes_, copied);
    for (std::size_t index = 0; index < begins.size(); ++index)
        PutLong(bytes, headerBytes + index * rowBytes + formatBytes, begins[index]);
    CheckReadAgain(PropertySetStream(bytes, name_));
    return bytes;
}

void PropertySetStream::CheckReadAgain(const PropertySetStream& again) const
{
    const auto check = [&](bool isSame) {
        if (!isSame)
            throw FailedEdit(name_, "a document property would not have the value that was put");
    };
    check(again.sections_.size() == sections_.size());
    std::size_t edited = 0;
    for (std::size_t index = 0; index < sections_.size(); ++index) {
        const Section& before = sections_[index];
        const Section& after = again.sections_[index];
        for (const Property& property : after.properties) {
            const auto was = Value(before, property.id);
            const std::string_view is = *again.Value(after, property.id);
            const bool isEdited = edits_.contains({before.begin, property.id});
            edited += isEdited ? 1 : 0;
            // Behind a new value there may be a gap, and padding behind the old end of the section.
            check(was && is.starts_with(*was) && (isEdited || is.size() - was->size() < 4));
        }
        check(after.properties.size() >= before.properties.size() && after.codePage == before.codePage);
    }
    check(edited == edits_.size());
}

}  // namespace tessarine::builtin
