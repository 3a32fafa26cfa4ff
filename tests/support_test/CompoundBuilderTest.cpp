#include "support/CompoundBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/CompoundReader.h"

namespace tessarine::test
{
namespace
{

std::vector<std::string> PathsOf(const std::string& file)
{
    std::vector<std::string> paths;
    for (const auto& entry : EntriesOf(file))
        paths.push_back(entry.path);
    return paths;
}

TEST(CompoundBuilder, GivesBackStreamsOfAllSizes)
{
    for (const bool large : {false, true}) {
        for (const bool scattered : {false, true}) {
            CompoundBuilder builder;
            builder.FreeSectors(3, 'j');
            if (large)
                builder.LargeSectors();
            if (scattered)
                builder.Scattered();
            const std::vector<std::size_t> sizes{0, 1, 63, 64, 65, 511, 4095, 4096, 4097, 70000};
            for (const auto size : sizes)
                builder.Stream("S" + std::to_string(size), std::string(size, static_cast<char>('a' + size % 26)));
            const std::string file = builder.Bytes();
            for (const auto size : sizes)
                EXPECT_EQ(StreamOf(file, "S" + std::to_string(size)),
                          std::string(size, static_cast<char>('a' + size % 26)));
        }
    }
}

TEST(CompoundBuilder, MakesTheStoragesOfAPath)
{
    const std::string file = CompoundBuilder().Stream("A/B/C", "c").Stream("A/D", "d").Storage("E").Bytes();

    EXPECT_THAT(PathsOf(file), testing::UnorderedElementsAre("", "A", "A/B", "A/B/C", "A/D", "E"));
    EXPECT_EQ(StreamOf(file, "A/B/C"), "c");
}

TEST(CompoundBuilder, HoldsManySiblingsInOrder)
{
    for (const int count : {1, 2, 3, 4, 7, 8, 100}) {
        CompoundBuilder builder;
        for (int i = 0; i < count; ++i)
            builder.Stream("Stream" + std::to_string(i), std::to_string(i));
        EXPECT_EQ(PathsOf(builder.Bytes()).size(), static_cast<std::size_t>(count) + 1);
    }
}

TEST(CompoundBuilder, HoldsMoreThanTheHeaderCanListOfTheTable)
{
    const std::string long16MiB(std::size_t{16} << 20, 'x');
    const std::string file = CompoundBuilder().Stream("Long", long16MiB).Bytes();

    EXPECT_TRUE(StreamOf(file, "Long") == long16MiB);
}

TEST(CompoundBuilder, WritesMarksOfEntries)
{
    CompoundMarks marks;
    marks.classId = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    marks.state = 7;
    marks.created = 0x0102030405060708;
    marks.modified = 9;
    const auto entries = EntriesOf(CompoundBuilder().Storage("A").Marks("A", marks).Bytes());

    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[1].marks, marks);
    EXPECT_EQ(entries[0].marks, CompoundMarks());
}

}  // namespace
}  // namespace tessarine::test
