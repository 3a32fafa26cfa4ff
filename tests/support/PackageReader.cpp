#include "support/PackageReader.h"

#include <zip.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <pugixml.hpp>
#include <stdexcept>

namespace tessarine::test
{
namespace
{

using Archive = std::unique_ptr<zip_t, decltype(&zip_discard)>;
using ArchiveFile = std::unique_ptr<zip_file_t, decltype(&zip_fclose)>;

Archive OpenArchive(const std::string& bytes)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    zip_t* archive = source == nullptr ? nullptr : zip_open_from_source(source, ZIP_RDONLY, &error);
    if (archive == nullptr) {
        const std::string text = zip_error_strerror(&error);
        zip_source_free(source);
        zip_error_fini(&error);
        throw std::runtime_error("not a zip package: " + text);
    }
    return {archive, zip_discard};
}

std::string ReadEntry(zip_t* archive, std::uint64_t index, std::uint64_t size, zip_flags_t flags)
{
    const ArchiveFile file(zip_fopen_index(archive, index, flags), zip_fclose);
    std::string bytes(size, '\0');
    char beyond = 0;
    const std::int64_t read = file ? zip_fread(file.get(), bytes.data(), bytes.size()) : -1;
    // The CRC is checked where the end is met.
    if (read < 0 || static_cast<std::uint64_t>(read) != size || zip_fread(file.get(), &beyond, 1) != 0)
        throw std::runtime_error("can't read entry " + std::to_string(index));
    return bytes;
}

/// Little-endian numbers of the central directory, with the bounds checked.
class HeaderBytes
{
public:
    explicit HeaderBytes(const std::string& bytes) : bytes_(bytes) {}

    std::uint64_t Number(std::size_t at, int size) const
    {
        std::uint64_t value = 0;
        for (int i = size - 1; i >= 0; --i)
            value = value << 8 | static_cast<unsigned char>(bytes_.at(at + static_cast<std::size_t>(i)));
        return value;
    }
    std::uint16_t Short(std::size_t at) const { return static_cast<std::uint16_t>(Number(at, 2)); }
    std::uint32_t Long(std::size_t at) const { return static_cast<std::uint32_t>(Number(at, 4)); }

private:
    const std::string& bytes_;
};

std::size_t DirectoryStart(const std::string& bytes)
{
    const HeaderBytes header(bytes);
    const std::size_t end = bytes.rfind("PK\x05\x06");
    if (end == std::string::npos)
        throw std::runtime_error("no end record");
    if (header.Long(end + 16) != 0xFFFFFFFF)
        return header.Long(end + 16);
    const std::size_t locator = bytes.rfind("PK\x06\x07");
    return static_cast<std::size_t>(header.Number(static_cast<std::size_t>(header.Number(locator + 8, 8)) + 48, 8));
}

std::string WithoutZip64Field(const std::string& extra)
{
    const HeaderBytes header(extra);
    std::string rest;
    for (std::size_t at = 0; at + 4 <= extra.size();) {
        const std::size_t size = 4u + header.Short(at + 2);
        if (header.Short(at) != 1)
            rest += extra.substr(at, size);
        at += size;
    }
    return rest;
}

/// What the central directory says; libzip does not tell the flags and the raw date.
void ReadHeaders(const std::string& bytes, std::vector<PackageEntry>& entries)
{
    const HeaderBytes header(bytes);
    std::size_t at = DirectoryStart(bytes);
    for (PackageEntry& entry : entries) {
        if (header.Long(at) != 0x02014B50)
            throw std::runtime_error("central directory broken at " + std::to_string(at));
        const std::size_t nameSize = header.Short(at + 28);
        const std::size_t extraSize = header.Short(at + 30);
        const std::size_t commentSize = header.Short(at + 32);
        entry.flags = header.Short(at + 8);
        entry.method = header.Short(at + 10);
        entry.modified = {.date = header.Short(at + 14), .time = header.Short(at + 12)};
        entry.crc = header.Long(at + 16);
        entry.externalAttributes = header.Long(at + 38);
        entry.name = bytes.substr(at + 46, nameSize);
        entry.extraField = WithoutZip64Field(bytes.substr(at + 46 + nameSize, extraSize));
        entry.comment = bytes.substr(at + 46 + nameSize + extraSize, commentSize);
        at += 46 + nameSize + extraSize + commentSize;
    }
}

std::string WithSlashes(std::string name)
{
    std::ranges::replace(name, '\\', '/');
    return name;
}

std::string Normal(const std::string& folder, const std::string& target)
{
    const std::filesystem::path path =
        target.starts_with('/') ? std::filesystem::path(target) : std::filesystem::path("/" + folder) / target;
    return path.lexically_normal().generic_string().substr(1);
}

std::string FolderOf(const std::string& part)
{
    const std::size_t slash = part.rfind('/');
    return slash == std::string::npos ? std::string() : part.substr(0, slash);
}

}  // namespace

PackageReader::PackageReader(std::string bytes) : bytes_(std::move(bytes))
{
    const Archive archive = OpenArchive(bytes_);
    const std::int64_t count = zip_get_num_entries(archive.get(), 0);
    entries_.resize(static_cast<std::size_t>(count));
    ReadHeaders(bytes_, entries_);
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        zip_stat_t stat;
        if (zip_stat_index(archive.get(), i, 0, &stat) != 0)
            throw std::runtime_error("can't read the header of entry " + std::to_string(i));
        entries_[i].packed = ReadEntry(archive.get(), i, stat.comp_size, ZIP_FL_COMPRESSED);
        entries_[i].bytes = ReadEntry(archive.get(), i, stat.size, 0);
    }
}

PackageReader::PackageReader(const Deck& deck) : PackageReader(deck.Bytes()) {}

PackageReader PackageReader::FromFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("can't read " + path.string());
    return {std::string(std::istreambuf_iterator<char>(file), {})};
}

std::vector<std::string> PackageReader::Names() const
{
    std::vector<std::string> names;
    for (const PackageEntry& entry : entries_)
        names.push_back(entry.name);
    return names;
}

const PackageEntry* PackageReader::Find(const std::string& name) const
{
    const auto entry = std::find_if(entries_.rbegin(), entries_.rend(), [&](const PackageEntry& each) {
        return WithSlashes(each.name) == WithSlashes(name);
    });
    return entry == entries_.rend() ? nullptr : &*entry;
}

const PackageEntry& PackageReader::Entry(const std::string& name) const
{
    const PackageEntry* entry = Find(name);
    if (entry == nullptr)
        throw std::runtime_error("the package has no entry " + name);
    return *entry;
}

std::vector<PackageRelationship> PackageReader::Relationships(const std::string& part) const
{
    std::vector<PackageRelationship> relationships;
    const PackageEntry* entry = Find(RelationshipsPartOf(part));
    if (entry == nullptr)
        return relationships;
    pugi::xml_document document;
    if (!document.load_buffer(entry->bytes.data(), entry->bytes.size()))
        throw std::runtime_error(entry->name + " is no XML");
    for (const pugi::xml_node node : document.document_element()) {
        relationships.push_back({node.attribute("Id").value(), node.attribute("Type").value(),
                                 FromUtf8(node.attribute("Target").value()),
                                 std::string_view(node.attribute("TargetMode").value()) == "External"});
    }
    return relationships;
}

std::string PackageReader::Target(const std::string& part, const std::string& id) const
{
    for (const PackageRelationship& relationship : Relationships(part)) {
        if (relationship.id == id && !relationship.external)
            return Normal(FolderOf(part), ToUtf8(relationship.target));
    }
    throw std::runtime_error(part + " has no internal relationship " + id);
}

std::string PackageReader::TargetOfType(const std::string& part, const std::string& type) const
{
    for (const PackageRelationship& relationship : Relationships(part)) {
        if (!relationship.external && relationship.type.ends_with("/" + type))
            return Normal(FolderOf(part), ToUtf8(relationship.target));
    }
    return {};
}

}  // namespace tessarine::test
