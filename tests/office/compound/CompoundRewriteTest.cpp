#include "office/builtin/compound/CompoundRewrite.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "files/CompoundFile.h"
#include "OpenedCompound.h"
#include "PatchedCompound.h"
#include "platform/Failure.h"
#include "support/CompoundBuilder.h"
#include "support/TemporaryFolder.h"

namespace tessarine::test
{
namespace
{

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::UnorderedElementsAre;

CompoundMarks MarksOf(unsigned char seed)
{
    CompoundMarks marks;
    for (unsigned char& byte : marks.classId)
        byte = seed++;
    marks.state = 0x1234u + seed;
    marks.created = 0x01C0000000000000 + seed;
    marks.modified = 0x01D0000000000000 + seed;
    return marks;
}

/// What a presentation has: streams large and small, storages in storages, marks on all of them.
CompoundBuilder Presentation()
{
    return CompoundBuilder()
        .Stream("PowerPoint Document", CountingBytes(20000))
        .Stream("Pictures", CountingBytes(70000))
        .Stream("Current User", CountingBytes(60))
        .Stream("\x05SummaryInformation", CountingBytes(4095))
        .Stream("Macros/VBA/dir", CountingBytes(700))
        .Stream("Macros/PROJECT", CountingBytes(4096))
        .Stream("Empty stream", "")
        .Storage("Empty storage")
        .Marks("", MarksOf(1))
        .Marks("Macros", MarksOf(30))
        .Marks("Macros/VBA", MarksOf(60))
        .Marks("Pictures", MarksOf(90));
}

std::vector<CompoundBuilder> Presentations()
{
    return {Presentation(), Presentation().LargeSectors(), Presentation().Scattered(),
            Presentation().FreeSectors(5, 'j')};
}

TEST(CompoundRewrite, KeepsEverythingThatDoesNotChange)
{
    for (const CompoundBuilder& builder : Presentations()) {
        const std::string old = builder.Bytes();

        const std::string written = OpenedCompound(old).With({});

        EXPECT_EQ(EntriesOf(written), EntriesOf(old));
        EXPECT_EQ(OpenedCompound(written).With({}), written);
    }
}

TEST(CompoundRewrite, KeepsTheRecordsButForPlaces)
{
    const std::string bytes = Presentation().Scattered().Bytes();
    const OpenedCompound old(bytes);
    const OpenedCompound written(old.With({}));

    ASSERT_EQ(written->Entries().size(), old->Entries().size());
    for (std::size_t i = 0; i < old->Entries().size(); ++i)
        EXPECT_EQ(written->Record(i).substr(0, firstSector), old->Record(i).substr(0, firstSector)) << i;
}

TEST(CompoundRewrite, PutsNewBytesIntoStreams)
{
    for (const CompoundBuilder& builder : Presentations()) {
        const std::string old = builder.Bytes();
        for (const std::string path : {"PowerPoint Document", "Current User", "Macros/VBA/dir", "Empty stream"}) {
            for (const std::size_t size : {0u, 1u, 64u, 65u, 4095u, 4096u, 4097u, 8192u, 100000u}) {
                const std::string bytes(size, 'n');

                const std::string written = OpenedCompound(old).With({{path, bytes}});

                auto expected = EntriesOf(old);
                std::ranges::find(expected, path, &ReadEntry::path)->bytes = bytes;
                ASSERT_EQ(EntriesOf(written), expected) << path << ", " << size;
            }
        }
    }
}

TEST(CompoundRewrite, IsReadByTheSystem)
{
    const std::string written = OpenedCompound(Presentation().Bytes()).With({{"Current User", CountingBytes(5000)}});

    const tessarine::CompoundFile file(written);

    EXPECT_EQ(file.Stream("PowerPoint Document"), CountingBytes(20000));
    EXPECT_EQ(file.Stream("Pictures"), CountingBytes(70000));
    EXPECT_EQ(file.Stream("Current User"), CountingBytes(5000));
    EXPECT_EQ(file.Stream("\x05SummaryInformation"), CountingBytes(4095));
}

TEST(CompoundRewrite, LeavesNothingOfReplacedBytes)
{
    for (const std::size_t size : {1000u, 9000u}) {
        std::string secret;
        while (secret.size() < size)
            secret += "Fabrikam ";
        const OpenedCompound old(CompoundBuilder()
                                     .Stream("PowerPoint Document", secret)
                                     .Stream("Other", "other")
                                     .FreeSectors(3, 'F')
                                     .Bytes());

        const std::string written = old.With({{"PowerPoint Document", "Contoso"}});

        EXPECT_THAT(written, AllOf(Not(HasSubstr("Fab")), Not(HasSubstr("FFFF")), HasSubstr("Contoso")));
    }
}

TEST(CompoundRewrite, FillsUpSectorsWithZeros)
{
    PatchedCompound patched(CompoundBuilder().Stream("Large", CountingBytes(9000)).Stream("Small", "small").Bytes());
    const auto lastOfLarge = [](const PatchedCompound& file) {
        return file.PositionOf(file.Record("Large", firstSector) + 17);
    };
    const auto mini = [](const PatchedCompound& file) {
        return file.PositionOf(file.Record("Root Entry", firstSector));
    };
    patched.bytes.replace(lastOfLarge(patched) + 400, 8, "leftover").replace(mini(patched) + 40, 8, "leftover");

    const PatchedCompound written(OpenedCompound(patched.bytes).With({}));

    EXPECT_EQ(written.bytes.substr(lastOfLarge(written) + 9000 % 512, 512 - 9000 % 512),
              std::string(512 - 9000 % 512, '\0'));
    EXPECT_EQ(written.bytes.substr(mini(written), 512), "small" + std::string(507, '\0'));
}

TEST(CompoundRewrite, LeavesOutRecordsThatNoStorageNames)
{
    PatchedCompound patched(CompoundBuilder().Stream("Lost", "lost bytes").Stream("Other", "x").Bytes());
    patched.Record("Root Entry", firstChild, patched.NumberOf("Other"));
    patched.Record("Other", leftSibling, 0xFFFFFFFF).Record("Other", rightSibling, 0xFFFFFFFF);

    const std::string written = OpenedCompound(patched.bytes).With({});

    EXPECT_THAT(written, Not(HasSubstr("lost bytes")));
    EXPECT_THAT(written, Not(HasSubstr(std::string("L\0o\0s\0t", 7))));
    EXPECT_EQ(StreamOf(written, "Other"), "x");
}

TEST(CompoundRewrite, CutsChildrenOffStreams)
{
    PatchedCompound patched(CompoundBuilder().Stream("Small", "x").Stream("Large", CountingBytes(5000)).Bytes());
    patched.Record("Small", firstChild, 0).Record("Large", firstChild, 77);

    const PatchedCompound written(OpenedCompound(patched.bytes).With({}));

    EXPECT_EQ(written.Record("Small", firstChild), 0xFFFFFFFFu);
    EXPECT_EQ(written.Record("Large", firstChild), 0xFFFFFFFFu);
}

TEST(CompoundRewrite, WritesMoreFatSectorsThanTheHeaderNames)
{
    const std::string large(111 * 128 * 512, 'L');
    const OpenedCompound old(CompoundBuilder().Stream("Pictures", "small").Bytes());

    const std::string written = old.With({{"Pictures", large}});

    EXPECT_EQ(StreamOf(written, "Pictures"), large);
    EXPECT_EQ(OpenedCompound(written).With({{"Pictures", "small"}}), old.With({}));
}

TEST(CompoundRewrite, RemovesStreamsAndStorages)
{
    const OpenedCompound old(Presentation().Stream("_signatures", "s").Stream("_xmlsignatures/one", "s").Bytes());

    const std::string written = old.With({}, {"_signatures", "_xmlsignatures"});

    std::vector<std::string> paths;
    for (const ReadEntry& entry : EntriesOf(written))
        paths.push_back(entry.path);
    EXPECT_THAT(paths, UnorderedElementsAre("", "PowerPoint Document", "Pictures", "Current User",
                                            "\x05SummaryInformation", "Macros", "Macros/VBA", "Macros/VBA/dir",
                                            "Macros/PROJECT", "Empty stream", "Empty storage"));
    EXPECT_THAT(written, Not(HasSubstr(std::string("_\0s\0i\0g\0n", 9))));
    EXPECT_EQ(StreamOf(written, "Macros/PROJECT"), CountingBytes(4096));
    EXPECT_EQ(tessarine::CompoundFile(written).Stream("Pictures"), CountingBytes(70000));
}

TEST(CompoundRewrite, RemovesTheLastEntryOfAStorage)
{
    const OpenedCompound old(CompoundBuilder().Stream("Storage/Only", "x").Stream("Other", "y").Bytes());

    const std::string written = old.With({}, {"Storage/Only"});

    EXPECT_THAT(OpenedCompound(written).Paths(), UnorderedElementsAre("Storage/", "Other"));
    EXPECT_EQ(PatchedCompound(written).Record("Storage", firstChild), 0xFFFFFFFFu);
}

/// Black entries from a record down to where its tree ends; -1 where ways differ or a red entry follows a red one.
int BlackHeight(const std::string& file, std::uint32_t number, bool isBelowRed)
{
    if (number == 0xFFFFFFFF)
        return 0;
    const PatchedCompound patched(file);
    const std::size_t at = patched.PositionOf(patched.Header(firstDirectorySector)) + 128 * std::size_t{number};
    const bool isBlack = file[at + 67] == 1;
    const int left = BlackHeight(file, patched.Header(at + leftSibling), !isBlack);
    const int right = BlackHeight(file, patched.Header(at + rightSibling), !isBlack);
    const bool isSound = left >= 0 && left == right && (isBlack || !isBelowRed);
    return isSound ? left + isBlack : -1;
}

TEST(CompoundRewrite, MakesRedBlackTreesOfWhatIsLeft)
{
    for (int count = 1; count <= 40; ++count) {
        CompoundBuilder builder;
        std::vector<std::string> paths;
        for (int i = 0; i < count; ++i)
            builder.Stream(paths.emplace_back((i % 3 == 0 ? "a " : "Longer ") + std::to_string(i)), "x");
        builder.Stream("Signature", "s");

        const std::string written = OpenedCompound(builder.Bytes()).With({}, {"Signature"});

        const std::uint32_t top = PatchedCompound(written).Record("Root Entry", firstChild);
        EXPECT_GE(BlackHeight(written, top, true), 1) << count;                     // its topmost is black
        EXPECT_EQ(EntriesOf(written).size(), static_cast<std::size_t>(count) + 1);  // raises when they aren't in order
    }
}

TEST(CompoundRewrite, FailsBeforeTheFirstByteWhenAStreamLacksSectors)
{
    PatchedCompound patched(Presentation().Bytes());
    patched.Next(patched.Record("Pictures", firstSector) + 1, 0xFFFFFFFF);
    const OpenedCompound old(patched.bytes);
    const TemporaryFolder folder;
    const String path = folder.Write(u"deck.ppt", "old");
    ReplacementFile target(path);

    EXPECT_EQ(DamageFrom([&] {
                  WriteCompoundFile(*old, {.streams = {{old.At("Current User"), "x"}}}, target);
              }),
              "The file is damaged: Pictures: it lacks sectors of the compound file");

    EXPECT_EQ(target.Position(), 0u);
    EXPECT_EQ(StreamOf(old.With({{"Pictures", "new"}}), "Pictures"), "new");
}

TEST(CompoundRewrite, WritesAFile)
{
    const OpenedCompound old(Presentation().Bytes());
    const TemporaryFolder folder;
    const String path = folder.Write(u"deck.ppt", "old");
    ReplacementFile target(path);

    WriteCompoundFile(*old, {.streams = {{old.At("Pictures"), "new"}}}, target);

    EXPECT_EQ(ContentOf(path), "old");
    target.Commit();
    EXPECT_EQ(ContentOf(path), old.With({{"Pictures", "new"}}));
}

TEST(CompoundRewrite, CopiesFromFileToFile)
{
    // Pieces of any length, such as long ones between short ones.
    CompoundBuilder builder = Presentation();
    builder.Stream("Long", CountingBytes(1'000'001)).Stream("Longer", CountingBytes(3 * 65536));
    for (const std::string& bytes : {builder.Bytes(), builder.Scattered().Bytes(), builder.LargeSectors().Bytes()}) {
        const TemporaryFolder folder;
        const RandomAccessFile source(folder.Write(u"old.ppt", bytes));
        const builtin::CompoundFile old(source);
        const String path = folder.Write(u"deck.ppt", "old");
        ReplacementFile target(path);

        WriteCompoundFile(old, {}, target);

        target.Commit();
        EXPECT_EQ(ContentOf(path), OpenedCompound(bytes).With({}));
        EXPECT_EQ(EntriesOf(ContentOf(path)), EntriesOf(bytes));
    }
}

TEST(CompoundChanges, AreEmptyWithoutAny)
{
    EXPECT_TRUE(builtin::CompoundChanges{}.Empty());
    EXPECT_FALSE((builtin::CompoundChanges{.streams = {{1, ""}}}).Empty());
    EXPECT_FALSE((builtin::CompoundChanges{.removed = {1}}).Empty());
}

}  // namespace
}  // namespace tessarine::test
