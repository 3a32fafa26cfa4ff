#include "support/Deck.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "support/PackageDress.h"

namespace tessarine::test
{
namespace
{

ZipEntry& EntryOf(ZipBuilder& package, const std::string& name)
{
    const auto entry = std::ranges::find(package.entries, name, &ZipEntry::name);
    if (entry == package.entries.end())
        throw std::invalid_argument("the deck has no entry " + name);
    return *entry;
}

}  // namespace

Deck& Deck::Master(SlideMaster master)
{
    masters_.push_back(std::move(master));
    return *this;
}

Deck& Deck::SetPageMaster(PageMaster kind, std::vector<Shape> shapes)
{
    pageMasters_[kind] = std::move(shapes);
    return *this;
}

Deck& Deck::Core(std::string element, String value)
{
    properties_.Core(std::move(element), std::move(value));
    return *this;
}

Deck& Deck::App(std::string element, String value)
{
    properties_.App(std::move(element), std::move(value));
    return *this;
}

Deck& Deck::Custom(String name, const std::string& kind, StringView value, const String& linkTarget)
{
    properties_.Custom(std::move(name), kind, value, linkTarget);
    return *this;
}

Deck& Deck::CustomXml(String name, std::string valueXml)
{
    properties_.CustomXml(std::move(name), std::move(valueXml));
    return *this;
}

Deck& Deck::Kind(DeckKind kind)
{
    kind_ = kind;
    return *this;
}

Deck& Deck::Macros()
{
    macros_ = true;
    return *this;
}

Deck& Deck::ModifyVerifier()
{
    modifyVerifier_ = true;
    return *this;
}

Deck& Deck::ReadOnlyRecommended()
{
    readOnlyRecommended_ = true;
    return *this;
}

Deck& Deck::MarkAsFinal()
{
    Core("cp:contentStatus", u"Final");
    return Custom(u"_MarkAsFinal", "bool", u"true");
}

Deck& Deck::Signed()
{
    signed_ = true;
    return *this;
}

Deck& Deck::Media(const std::string& name, std::size_t size, unsigned seed)
{
    media_.emplace_back(name, size, seed);
    return Store(name);
}

Deck& Deck::MainPart(std::string name)
{
    mainPart_ = std::move(name);
    return *this;
}

Deck& Deck::Strict()
{
    strict_ = true;
    return *this;
}

Deck& Deck::Prefixes(std::map<std::string, std::string> prefixes)
{
    prefixes_ = std::move(prefixes);
    return *this;
}

Deck& Deck::SlideOrder(std::vector<int> numbers)
{
    slideOrder_ = std::move(numbers);
    return *this;
}

Deck& Deck::Through(Door door)
{
    doors_.push_back(std::move(door));
    return *this;
}

Deck& Deck::OnEntry(const std::string& name, std::function<void(ZipEntry&)> change)
{
    return Through([=](ZipBuilder& package) { change(EntryOf(package, name)); });
}

Deck& Deck::Entry(const std::string& name, std::string bytes)
{
    return Through([name, bytes = std::move(bytes)](ZipBuilder& package) {
        const auto entry = std::ranges::find(package.entries, name, &ZipEntry::name);
        if (entry == package.entries.end())
            package.entries.push_back({.name = name, .bytes = bytes});
        else
            entry->bytes = bytes;
    });
}

Deck& Deck::Without(const std::string& name)
{
    return Through([name](ZipBuilder& package) {
        if (std::erase_if(package.entries, [&](const ZipEntry& entry) { return entry.name == name; }) == 0)
            throw std::invalid_argument("the deck has no entry " + name);
    });
}

Deck& Deck::Edit(const std::string& name, std::string from, std::string to)
{
    return OnEntry(name, [=](ZipEntry& entry) { entry.bytes = Replaced(entry.bytes, from, to); });
}

Deck& Deck::Utf16(const std::string& name)
{
    return OnEntry(name, [](ZipEntry& entry) { entry.bytes = ToUtf16Part(entry.bytes); });
}

Deck& Deck::Bom(const std::string& name)
{
    return OnEntry(name, [](ZipEntry& entry) { entry.bytes = WithByteOrderMark(entry.bytes); });
}

Deck& Deck::Store(const std::string& name)
{
    return OnEntry(name, [](ZipEntry& entry) { entry.stored = true; });
}

Deck& Deck::Rename(const std::string& name, std::string newName)
{
    return OnEntry(name, [=](ZipEntry& entry) { entry.name = newName; });
}

Deck& Deck::DuplicateEntry(const std::string& name, std::string bytes)
{
    return Through([name, bytes = std::move(bytes)](ZipBuilder& package) {
        ZipEntry second = EntryOf(package, name);
        second.bytes = bytes;
        package.entries.push_back(std::move(second));
    });
}

Deck& Deck::MoveToFront(const std::string& name)
{
    return Through([name](ZipBuilder& package) {
        const auto entry = package.entries.begin() + (&EntryOf(package, name) - package.entries.data());
        std::rotate(package.entries.begin(), entry, entry + 1);
    });
}

Deck& Deck::Modified(const std::string& name, DosDateTime modified)
{
    return OnEntry(name, [=](ZipEntry& entry) { entry.modified = modified; });
}

Deck& Deck::ModifiedAll(DosDateTime modified)
{
    return Through([=](ZipBuilder& package) {
        for (ZipEntry& entry : package.entries)
            entry.modified = modified;
    });
}

Deck& Deck::ExternalAttributes(const std::string& name, std::uint32_t attributes)
{
    return OnEntry(name, [=](ZipEntry& entry) { entry.externalAttributes = attributes; });
}

Deck& Deck::Extra(const std::string& name, std::string fields)
{
    return OnEntry(name, [=](ZipEntry& entry) { entry.extraField = fields; });
}

Deck& Deck::EntryComment(const std::string& name, std::string comment)
{
    return OnEntry(name, [=](ZipEntry& entry) { entry.comment = comment; });
}

Deck& Deck::DataDescriptor()
{
    return Through([](ZipBuilder& package) {
        for (ZipEntry& entry : package.entries)
            entry.dataDescriptor = true;
    });
}

Deck& Deck::DataDescriptor(const std::string& name)
{
    return OnEntry(name, [](ZipEntry& entry) { entry.dataDescriptor = true; });
}

Deck& Deck::Zip64()
{
    return Through([](ZipBuilder& package) {
        package.zip64End = true;
        for (ZipEntry& entry : package.entries)
            entry.zip64 = true;
    });
}

Deck& Deck::Backslashes()
{
    return Through([](ZipBuilder& package) {
        for (ZipEntry& entry : package.entries)
            std::ranges::replace(entry.name, '/', '\\');
    });
}

Deck& Deck::Prefix(std::string junk)
{
    return Through([=](ZipBuilder& package) { package.prefix = junk; });
}

Deck& Deck::Comment(std::string text)
{
    return Through([=](ZipBuilder& package) { package.comment = text; });
}

ZipBuilder Deck::Package() const
{
    ZipBuilder package;
    const PackageParts parts = Parts();
    for (const PackageParts::Part& part : parts.Parts()) {
        std::string bytes = part.bytes;
        const bool isXml = part.name.ends_with(".xml") || part.name.ends_with(".rels");
        if (isXml && strict_)
            bytes = ToStrict(std::move(bytes));
        if (isXml && !prefixes_.empty())
            bytes = WithPrefixes(bytes, prefixes_);
        package.entries.push_back({.name = part.name, .bytes = std::move(bytes)});
    }
    for (const Door& door : doors_)
        door(package);
    return package;
}

std::string Deck::Bytes() const
{
    return Package().Bytes();
}

void Deck::WriteTo(const std::filesystem::path& path) const
{
    std::ofstream file(path, std::ios::binary);
    file << Bytes();
    if (!file.flush())
        throw std::runtime_error("can't write " + path.string());
}

std::string Deck::EntryBytes(const std::string& name) const
{
    ZipBuilder package = Package();
    return EntryOf(package, name).bytes;
}

}  // namespace tessarine::test
