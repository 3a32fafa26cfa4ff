#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OpenedCompound.h"
#include "PatchedCompound.h"
#include "platform/Failure.h"
#include "support/CompoundBuilder.h"

namespace tessarine::test
{
namespace
{

using testing::EndsWith;
using testing::HasSubstr;

constexpr std::uint32_t none = 0xFFFFFFFF;

/// Two streams with sectors of their own, two in the mini stream, and a storage.
std::string SmallCompound()
{
    return CompoundBuilder()
        .Stream("Document", CountingBytes(5000))
        .Stream("Pictures", CountingBytes(6000))
        .Stream("Storage/Inner", CountingBytes(100))
        .Stream("Tiny", CountingBytes(200))
        .Bytes();
}

std::string DamageOf(const std::string& bytes, const builtin::Limits& limits = builtin::Limits::Default())
{
    return DamageFrom([&] { const OpenedCompound file(bytes, limits); });
}

std::string DamageOfStream(const OpenedCompound& file, const std::string& path)
{
    return DamageFrom([&] { file.Stream(path); });
}

/// Reads what can be read and writes it anew; what was written holds the same. Any failure is one for a damaged file.
void ReadsOrRefuses(const std::string& bytes, const std::string& what)
{
    const std::string damage = DamageFrom([&] {
        const OpenedCompound file(bytes);
        const OpenedCompound again(file.With({}));
        ASSERT_EQ(again.Paths(), file.Paths()) << what;
        for (std::size_t i = 1; i < file->Entries().size(); ++i) {
            if (file->Entries()[i].kind != builtin::CompoundEntry::Kind::Stream)
                continue;
            ASSERT_EQ(again->Bytes(i), file->Bytes(i)) << what;
        }
    });
    EXPECT_THAT(damage, testing::AnyOf("", HasSubstr("The "))) << what;
}

TEST(DamagedCompound, IsRefusedWithoutAHeader)
{
    const std::string whole = SmallCompound();

    EXPECT_THAT(DamageOf(""), EndsWith("the header of the compound file is cut"));
    EXPECT_THAT(DamageOf(whole.substr(0, 511)), EndsWith("the header of the compound file is cut"));
    EXPECT_THAT(DamageOf(whole.substr(0, 512)), EndsWith("the directory of the compound file is cut"));
    EXPECT_THAT(DamageOf("PK" + whole.substr(2)), EndsWith("it is not a compound file"));
}

TEST(DamagedCompound, IsRefusedWithSectorsOfOtherSizes)
{
    constexpr std::size_t shifts = 30;
    for (const std::uint32_t value : {0x60000u, 0x60008u, 0x6000Au, 0x6FFFFu, 0x50009u, 0x70009u, 0xFFFF0009u})
        EXPECT_THAT(DamageOf(PatchedCompound(SmallCompound()).Header(shifts, value).bytes),
                    EndsWith("the sectors of the compound file have no size that they can have"))
            << value;
}

TEST(DamagedCompound, IsReadOrRefusedWhereverItIsCut)
{
    const std::string whole = SmallCompound();
    for (std::size_t length = 0; length < whole.size(); length += length % 512 < 4 ? 1 : 31)
        ReadsOrRefuses(whole.substr(0, length), "cut at " + std::to_string(length));
}

TEST(DamagedCompound, IsReadOrRefusedWithAnyByteChanged)
{
    for (const bool hasLargeSectors : {false, true}) {
        CompoundBuilder builder;
        builder.Stream("Large", CountingBytes(4097)).Stream("Storage/Tiny", "tiny");
        if (hasLargeSectors)
            builder.LargeSectors();
        const std::string whole = builder.Bytes();
        const PatchedCompound sound(whole);
        const std::size_t directory = sound.PositionOf(sound.Header(firstDirectorySector));
        const std::size_t table = sound.PositionOf(sound.Header(firstFatSector));
        const std::size_t miniTable = sound.PositionOf(sound.Header(firstMiniFatSector));
        using Range = std::pair<std::size_t, std::size_t>;  // begin and length
        for (const auto& [begin, length] :
             {Range{0, 96}, Range{directory, 512}, Range{table, 64}, Range{miniTable, 16}}) {
            for (std::size_t at = begin; at < begin + length; ++at) {
                for (const int change : {0x01, 0x80, 0xFF}) {
                    std::string changed = whole;
                    changed[at] = static_cast<char>(changed[at] ^ change);
                    ReadsOrRefuses(changed, "byte " + std::to_string(at) + " ^ " + std::to_string(change));
                }
            }
        }
    }
}

TEST(DamagedCompound, KeepsOneStreamsTroubleFromTheOthers)
{
    PatchedCompound patched(SmallCompound());
    patched.Next(patched.Record("Document", firstSector) + 2, none);

    const OpenedCompound file(patched.bytes);

    EXPECT_EQ(DamageOfStream(file, "Document"), "The file is damaged: Document: it lacks sectors of the compound file");
    EXPECT_EQ(file.Stream("Pictures"), CountingBytes(6000));
    EXPECT_EQ(file.Stream("Tiny"), CountingBytes(200));
}

TEST(DamagedCompound, FollowsNoLoop)
{
    PatchedCompound patched(SmallCompound());
    const std::uint32_t document = patched.Record("Document", firstSector);
    const std::uint32_t tiny = patched.Record("Tiny", firstSector);
    patched.Next(document + 2, document).MiniNext(tiny + 1, tiny);

    const OpenedCompound file(patched.bytes);

    EXPECT_THAT(DamageOfStream(file, "Document"), HasSubstr("it lacks sectors"));
    EXPECT_THAT(DamageOfStream(file, "Tiny"), HasSubstr("it lacks sectors"));
    EXPECT_EQ(file.Stream("Storage/Inner"), CountingBytes(100));
}

TEST(DamagedCompound, GivesNoSectorToTwoStreams)
{
    PatchedCompound patched(SmallCompound());
    patched.Record("Pictures", firstSector, patched.Record("Document", firstSector) + 3);
    patched.Record("Tiny", firstSector, patched.Record("Inner", firstSector));

    const OpenedCompound file(patched.bytes);

    EXPECT_EQ(file.Stream("Document"), CountingBytes(5000));
    EXPECT_THAT(DamageOfStream(file, "Pictures"), HasSubstr("it lacks sectors"));
    EXPECT_EQ(file.Stream("Storage/Inner"), CountingBytes(100));
    EXPECT_THAT(DamageOfStream(file, "Tiny"), HasSubstr("it lacks sectors"));
}

TEST(DamagedCompound, TakesNoTablesForStreams)
{
    PatchedCompound patched(SmallCompound());
    const std::uint32_t last = patched.Record("Document", firstSector) + 8;
    for (const std::size_t table : {firstFatSector, firstDirectorySector, firstMiniFatSector}) {
        PatchedCompound leading = patched;
        leading.Next(last, leading.Header(table));

        EXPECT_THAT(DamageOfStream(OpenedCompound(leading.bytes), "Document"), HasSubstr("it lacks sectors")) << table;
    }
}

TEST(DamagedCompound, TakesNoMemoryForSizesThatItHasNot)
{
    PatchedCompound patched(CompoundBuilder().LargeSectors().Stream("Document", CountingBytes(5000)).Bytes());
    patched.Record("Document", sizeHigh, 0x7FFFFFFF);

    EXPECT_THAT(DamageOfStream(OpenedCompound(patched.bytes), "Document"), HasSubstr("it lacks sectors"));
}

TEST(DamagedCompound, IsRefusedWhenItsDirectoryGoesInCircles)
{
    PatchedCompound patched(CompoundBuilder()
                                .Stream("Stream 1", "x")
                                .Stream("Stream 2", "x")
                                .Stream("Stream 3", "x")
                                .Stream("Stream 4", "x")
                                .Bytes());
    const std::uint32_t directory = patched.Header(firstDirectorySector);

    EXPECT_THAT(DamageOf(PatchedCompound(patched).Next(directory + 1, directory).bytes),
                EndsWith("the directory of the compound file is cut"));
    EXPECT_THAT(DamageOf(PatchedCompound(patched).Next(directory, 0x01000000).bytes),
                EndsWith("the directory of the compound file is cut"));
    EXPECT_THAT(DamageOf(PatchedCompound(patched).Header(firstDirectorySector, none).bytes),
                EndsWith("the directory of the compound file is cut"));
}

TEST(DamagedCompound, IsRefusedWhenItsTreeCantBeFollowed)
{
    // Such a tree would lose streams when the file is written anew.
    const PatchedCompound sound(SmallCompound());
    const std::string notThere = "the directory of the compound file names an entry that is missing, or one twice";
    const std::string unknown = "the directory of the compound file names an entry of an unknown kind";

    for (const std::uint32_t number : {0u, 1u, sound.NumberOf("Inner"), 1000u, 0xFFFFFFFEu}) {
        for (const std::size_t link : {leftSibling, rightSibling, firstChild}) {
            PatchedCompound patched = sound;
            patched.Record("Storage", link, number);
            if (patched.bytes == sound.bytes)
                continue;
            EXPECT_THAT(DamageOf(patched.bytes), EndsWith(notThere)) << link << ' ' << number;
        }
    }
    for (const std::uint32_t kind : {0u, 3u, 4u, 5u, 255u})
        EXPECT_THAT(DamageOf(PatchedCompound(sound).Record("Inner", kindAndColor, 0x100 + kind).bytes),
                    EndsWith(unknown))
            << kind;
    EXPECT_THAT(DamageOf(PatchedCompound(sound).Record("Root Entry", kindAndColor, 0x102).bytes),
                EndsWith("the directory of the compound file has no root"));
}

TEST(DamagedCompound, IsRefusedWithADirectoryBeyondTheLimit)
{
    CompoundBuilder builder;
    for (int i = 1; i < 32; ++i)
        builder.Storage("Storage " + std::to_string(i));
    builtin::Limits limits;

    limits.directoryBytes = 32 * 128;
    EXPECT_EQ(DamageOf(builder.Bytes(), limits), "");
    limits.directoryBytes = 32 * 128 - 1;
    EXPECT_THAT(DamageOf(builder.Bytes(), limits), EndsWith("the directory of the compound file is too large"));
}

TEST(DamagedCompound, FollowsNoLoopOfTheListOfTables)
{
    // 110 sectors of the FAT: the last is named by a sector of the list, which names itself as the next.
    PatchedCompound patched(CompoundBuilder().Stream("Pictures", CountingBytes(110 * 128 * 512 - 120 * 512)).Bytes());
    const std::uint32_t list = patched.Header(firstDifatSector);
    PatchedCompound looping = patched;
    for (std::size_t at = 0; at < 512; at += 4)
        looping.Header(looping.PositionOf(list) + at, at < 508 ? none : list);

    EXPECT_EQ(DamageOf(patched.bytes), "");
    EXPECT_NE(DamageOf(looping.bytes), "");
}

}  // namespace
}  // namespace tessarine::test
