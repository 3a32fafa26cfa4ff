// Fixtures that are no readable presentation.
#include <stdexcept>

#include "support/CompoundFile.h"
#include "support/Fixtures.h"
#include "support/PackageDress.h"

namespace tessarine::test::fixtures
{
namespace
{

Deck OneSlide()
{
    return Deck().Slide(Title(u"Fabrikam"));
}

std::string Short(unsigned value)
{
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF)};
}

std::string Long(std::uint32_t value)
{
    return Short(value & 0xFFFF) + Short(value >> 16);
}

/// A record of [MS-PPT]: version and instance, type, length, content.
std::string Record(unsigned versionAndInstance, unsigned type, const std::string& content)
{
    return Short(versionAndInstance) + Short(type) + Long(static_cast<std::uint32_t>(content.size())) + content;
}

/// The compound file around an encrypted package ([MS-OFFCRYPTO] 2.3): the size of the plain package and bytes that
/// mean nothing.
std::string EncryptedWith(const std::string& encryptionInfo)
{
    constexpr std::uint32_t PlainSize = 28000;
    return CompoundFile({{"EncryptionInfo", encryptionInfo},
                         {"EncryptedPackage", Long(PlainSize) + Long(0) + IncompressibleBytes(28672, 11)},
                         {"\x06"
                          "DataSpaces/Version",
                          "version"},
                         {"\x06"
                          "DataSpaces/DataSpaceMap",
                          "map"}});
}

}  // namespace

std::string EncryptedAgile()
{
    return EncryptedWith(
        Short(4) + Short(4) + Long(0x40) +
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n<encryption "
        "xmlns=\"http://schemas.microsoft.com/office/2006/encryption\"><keyData saltSize=\"16\" blockSize=\"16\" "
        "keyBits=\"256\" hashSize=\"64\" cipherAlgorithm=\"AES\" cipherChaining=\"ChainingModeCBC\" "
        "hashAlgorithm=\"SHA512\" saltValue=\"bM0lUdH7BTSOzPoIJeCpLA==\"/></encryption>");
}

std::string EncryptedStandard()
{
    const std::string header =
        Long(0x24) + Long(0) + Long(0x660E) + Long(0x8004) + Long(128) + Long(0x18) + Long(0) + Long(0);
    return EncryptedWith(Short(4) + Short(2) + Long(0x24) + Long(static_cast<std::uint32_t>(header.size())) + header +
                         Long(16) + IncompressibleBytes(72, 5));
}

std::string LegacyPresentation()
{
    const std::string document = Record(0x000F, 1000, Record(0x0001, 1001, std::string(40, '\0')));
    const std::string edit = Record(0, 4085, std::string(28, '\0'));
    const std::string user = Record(0, 4086,
                                    Long(20) + Long(0xE391C05F) + Long(static_cast<std::uint32_t>(document.size())) +
                                        Short(4) + Short(0x03F4) + std::string("\x03\0\0\0", 4) + "User");
    return CompoundFile({{"Current User", user}, {"PowerPoint Document", document + edit}});
}

std::string OtherCompoundFile()
{
    return CompoundFile({{"WordDocument", IncompressibleBytes(5000, 3)}});
}

std::string TruncatedPackage()
{
    const std::string bytes = OneSlide().Bytes();
    return bytes.substr(0, bytes.size() / 2);
}

std::string PackageWithMissingSlide()
{
    return OneSlide().Slide(Title(u"Fabrikam")).Without("ppt/slides/slide2.xml").Bytes();
}

std::string PackageWithBrokenXml()
{
    return OneSlide().Edit(fixtureSlide, "</p:cSld>", "").Bytes();
}

std::string PackageWithEntityDeclaration()
{
    std::string entities = "<!DOCTYPE p [<!ENTITY e0 \"Fabrikam\">";
    for (int i = 1; i <= 9; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        entities += "<!ENTITY e" + std::to_string(i) + " \"" + inner + inner + inner + inner + inner + inner + "\">";
    }
    return OneSlide()
        .Edit(fixtureSlide, "<p:sld ", entities + "]><p:sld ")
        .Edit(fixtureSlide, ">Fabrikam<", ">&e9;<")
        .Bytes();
}

std::string PackageWithoutContentTypes()
{
    return OneSlide().Without("[Content_Types].xml").Bytes();
}

std::string PackageWithoutMainPart()
{
    return OneSlide().Without("ppt/presentation.xml").Bytes();
}

std::string PackageWithWrongCrc()
{
    const std::string text = OneSlide().EntryBytes(fixtureSlide);
    std::string bytes = OneSlide().Store(fixtureSlide).Bytes();
    const std::size_t at = bytes.find(text);
    if (at == std::string::npos)
        throw std::logic_error("the stored slide is not in the package");
    bytes[at + text.find("Fabrikam")] = 'f';
    return bytes;
}

std::string EmptyFile()
{
    return {};
}

std::string Workbook()
{
    PackageParts parts;
    parts.Reserve("[Content_Types].xml");
    PartWriter root(parts, "");
    root.Relate("officeDocument", "xl/workbook.xml");
    parts.Put("xl/workbook.xml",
              XmlDeclaration() +
                  "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><sheets/></workbook>",
              "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml");
    root.Finish({});
    parts.Put("[Content_Types].xml", parts.ContentTypes());
    ZipBuilder package;
    for (const PackageParts::Part& part : parts.Parts())
        package.entries.push_back({.name = part.name, .bytes = part.bytes});
    return package.Bytes();
}

std::string TextFile()
{
    return "Fabrikam is mentioned here, but this is no presentation.\n";
}

}  // namespace tessarine::test::fixtures
