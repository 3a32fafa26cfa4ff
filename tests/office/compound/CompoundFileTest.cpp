#include "office/builtin/compound/CompoundFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OpenedCompound.h"
#include "PatchedCompound.h"
#include "support/CompoundBuilder.h"
#include "support/CompoundFile.h"

namespace tessarine::test
{
namespace
{

using testing::ElementsAre;
using testing::UnorderedElementsAre;
using Kind = builtin::CompoundEntry::Kind;

/// Sizes around those of mini sectors, sectors and what parts the two.
constexpr std::size_t telling[] = {0, 1, 63, 64, 65, 511, 512, 513, 4095, 4096, 4097, 8191, 8192, 8193, 70000};

TEST(CompoundFile, ReadsStreamsOfAnySize)
{
    for (const bool hasLargeSectors : {false, true}) {
        CompoundBuilder builder;
        if (hasLargeSectors)
            builder.LargeSectors();
        for (const std::size_t size : telling)
            builder.Stream("Size " + std::to_string(size), CountingBytes(size));

        const OpenedCompound file(builder.Bytes());

        for (const std::size_t size : telling)
            EXPECT_EQ(file.Stream("Size " + std::to_string(size)), CountingBytes(size)) << size;
    }
}

TEST(CompoundFile, ReadsAnyPartOfAStream)
{
    for (const std::size_t size : {200u, 5000u}) {
        const std::string bytes = CountingBytes(size);
        const OpenedCompound file(CompoundBuilder().Stream("A", "a").Stream("B", bytes).Scattered().Bytes());
        const std::size_t stream = file.At("B");

        for (std::size_t from = 0; from <= size; from += 37) {
            for (std::size_t length = 0; length <= size - from; length += 61) {
                std::string part(length, '\0');
                file->Read(stream, from, std::as_writable_bytes(std::span(part)));
                ASSERT_EQ(part, bytes.substr(from, length)) << from;
            }
        }
    }
}

TEST(CompoundFile, ReadsNothingBeyondTheEndOfAStream)
{
    const OpenedCompound file(CompoundBuilder().Stream("\x05Small", std::string(10, 'x')).Bytes());
    std::byte buffer[2];

    for (const std::uint64_t offset : {std::uint64_t{9}, std::uint64_t{11}, ~std::uint64_t{0}})
        EXPECT_EQ(DamageFrom([&] { file->Read(file.At("\x05Small"), offset, buffer); }),
                  "The file is damaged: Small: it ends too early (at byte " + std::to_string(offset) + ")");
}

TEST(CompoundFile, TellsStoragesWithTheirEntries)
{
    const OpenedCompound file(CompoundBuilder()
                                  .Stream("Macros/VBA/dir", "code")
                                  .Stream("Macros/PROJECT", "project")
                                  .Storage("Empty")
                                  .Stream("PowerPoint Document", "slides")
                                  .Bytes());

    EXPECT_THAT(file.Paths(), UnorderedElementsAre("Macros/", "Macros/VBA/", "Macros/VBA/dir", "Macros/PROJECT",
                                                   "Empty/", "PowerPoint Document"));
    EXPECT_EQ(file.Stream("Macros/VBA/dir"), "code");
    EXPECT_EQ(file->Entries()[file.At("Macros/VBA")].kind, Kind::Storage);
    EXPECT_EQ(file->Entries()[file.At("PowerPoint Document")].size, 6u);
    EXPECT_FALSE(file.Has("PROJECT"));
    EXPECT_EQ(file->Entries()[builtin::CompoundFile::root].kind, Kind::Root);
}

TEST(CompoundFile, TellsClassIds)
{
    CompoundMarks marks;
    marks.classId = {0x10, 0x8D, 0x81, 0x64, 0x9B, 0x4F, 0xCF, 0x11, 0x86, 0xEA, 0x00, 0xAA, 0x00, 0xB9, 0x29, 0xE8};
    const OpenedCompound file(CompoundBuilder().Marks("", marks).Bytes());

    const auto& found = file->Entries()[builtin::CompoundFile::root].classId;

    for (std::size_t i = 0; i < found.size(); ++i)
        EXPECT_EQ(std::to_integer<unsigned char>(found[i]), marks.classId[i]) << i;
}

TEST(CompoundFile, FindsNamesWhateverTheirCase)
{
    const OpenedCompound file(CompoundBuilder().Stream("Straße Ärger", "x").Storage("Current User").Bytes());

    EXPECT_TRUE(file->Find(0, u"STRAßE äRGER"));
    EXPECT_TRUE(file->Find(0, u"CURRENT USER"));
    EXPECT_FALSE(file->Find(0, u"STRASSE ÄRGER"));
    EXPECT_FALSE(file->Find(0, u"Current Use"));
    EXPECT_FALSE(file->Find(0, u"Root Entry"));
}

TEST(CompoundFile, ReadsNamesOf31Units)
{
    const std::string name = "A name of thirty-one UTF-16 unit";

    EXPECT_THAT(OpenedCompound(CompoundBuilder().Stream(name.substr(0, 31), "x").Bytes()).Paths(),
                ElementsAre(name.substr(0, 31)));
}

TEST(CompoundFile, ReadsNamesWhoseLengthIsWrong)
{
    PatchedCompound patched(CompoundBuilder().Stream("Current User", "x").Bytes());
    constexpr std::size_t nameLengthAndKind = 64;
    for (const std::uint32_t length : {24u, 25u, 26u, 27u, 28u, 64u, 66u, 0xFFFFu})
        EXPECT_THAT(
            OpenedCompound(PatchedCompound(patched).Record("Current User", nameLengthAndKind, 0x1020000 + length).bytes)
                .Paths(),
            ElementsAre("Current User"))
            << length;
    EXPECT_THAT(OpenedCompound(patched.Record("Current User", nameLengthAndKind, 0x1020000).bytes).Paths(),
                ElementsAre(""));
}

TEST(CompoundFile, ReadsWhatTheSystemWrites)
{
    const OpenedCompound file(
        CompoundFile({{"Current User", "user"}, {"Storage/Stream", "inner"}, {"Document", CountingBytes(10000)}}));

    EXPECT_THAT(file.Paths(), UnorderedElementsAre("Current User", "Storage/", "Storage/Stream", "Document"));
    EXPECT_EQ(file.Stream("Document"), CountingBytes(10000));
    EXPECT_EQ(file.Stream("Storage/Stream"), "inner");
}

TEST(CompoundFile, ReadsMoreFatSectorsThanTheHeaderNames)
{
    // The header names 109 sectors of the FAT, each for 128 sectors of 512 bytes.
    const std::string large = CountingBytes(111 * 128 * 512);

    EXPECT_EQ(OpenedCompound(CompoundBuilder().Stream("Pictures", large).Scattered().Bytes()).Stream("Pictures"),
              large);
}

TEST(CompoundFile, ReadsAStorageWhoseTreeIsAList)
{
    // Each entry has the next one at its right: such a tree is as deep as it has entries.
    CompoundBuilder builder;
    for (int i = 0; i < 3000; ++i)
        builder.Stream("Stream " + std::to_string(100000 + i), "x");
    PatchedCompound patched(builder.Bytes());
    for (std::uint32_t i = 0; i < 3000; ++i) {
        const std::string name = "Stream " + std::to_string(100000 + i);
        patched.Record(name, leftSibling, 0xFFFFFFFF).Record(name, rightSibling, i < 2999 ? i + 2 : 0xFFFFFFFF);
    }
    patched.Record("Root Entry", firstChild, 1);

    EXPECT_EQ(OpenedCompound(patched.bytes)->Entries().size(), 3001u);
}

TEST(CompoundFile, IgnoresCountsInTheHeader)
{
    PatchedCompound patched(CompoundBuilder().Stream("Small", "x").Stream("Large", CountingBytes(9000)).Bytes());
    constexpr std::size_t fatSectors = 44, miniFatSectors = 64, difatSectors = 72, directorySectors = 40;
    for (const std::size_t field : {fatSectors, miniFatSectors, difatSectors, directorySectors})
        patched.Header(field, 0x12345678);

    const OpenedCompound file(patched.bytes);

    EXPECT_EQ(file.Stream("Small"), "x");
    EXPECT_EQ(file.Stream("Large"), CountingBytes(9000));
}

TEST(CompoundFile, IgnoresTheHighHalfOfSizesBelowVersion4)
{
    PatchedCompound patched(CompoundBuilder().Stream("Small", "x").Bytes());
    patched.Record("Small", sizeHigh, 0xCDCDCDCD).Record("Root Entry", sizeHigh, 1);

    EXPECT_EQ(OpenedCompound(patched.bytes).Stream("Small"), "x");
}

TEST(CompoundFile, LeavesOutRecordsThatNoStorageNames)
{
    PatchedCompound patched(CompoundBuilder().Stream("Only", "x").Bytes());
    patched.Record("Root Entry", firstChild, 0xFFFFFFFF);

    EXPECT_THAT(OpenedCompound(patched.bytes).Paths(), ElementsAre());
}

TEST(CompoundFile, ReadsAFileThatEndsInTheFillOfItsLastSector)
{
    // The tables are the last sectors of the builder's files: here they are moved to the front.
    const OpenedCompound file(CompoundBuilder().Stream("Large", CountingBytes(5000)).Scattered().Bytes());
    std::string bytes = file.With({});
    const PatchedCompound rewritten(bytes);
    const std::size_t table = rewritten.PositionOf(rewritten.Header(firstFatSector));
    ASSERT_EQ(bytes.size(), table + 512);
    bytes.resize(table + 4 * ((table - 512) / 512 + 1));  // as many numbers as there are sectors

    EXPECT_EQ(OpenedCompound(bytes).Stream("Large"), CountingBytes(5000));
}

TEST(CompoundFile, IgnoresSectorsBeyondASize)
{
    PatchedCompound patched(CompoundBuilder().Stream("Large", CountingBytes(9000)).Bytes());
    patched.Record("Large", sizeLow, 5000);

    EXPECT_EQ(OpenedCompound(patched.bytes).Stream("Large"), CountingBytes(9000).substr(0, 5000));
}

}  // namespace
}  // namespace tessarine::test
