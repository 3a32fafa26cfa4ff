#include "files/CompoundFile.h"

#include <gtest/gtest.h>

#include "support/CompoundFile.h"

namespace tessarine
{

TEST(CompoundFile, IsKnownByItsFirstBytes)
{
    EXPECT_TRUE(IsCompoundFile(test::CompoundFile({{"Workbook", "content"}})));
    EXPECT_FALSE(IsCompoundFile("PK\x03\x04"));
    EXPECT_FALSE(IsCompoundFile(""));
}

TEST(CompoundFile, GivesTheStreamsOfItsRootWhateverTheirCase)
{
    const std::string large(20000, 'x');
    const std::string file = test::CompoundFile({{"Workbook", "small"}, {"Large", large}, {"Storage/Inner", "inner"}});
    const CompoundFile compound(file);

    EXPECT_FALSE(compound.IsEmpty());
    EXPECT_TRUE(compound.Has("WORKBOOK"));
    EXPECT_EQ(compound.Stream("workbook"), "small");
    EXPECT_EQ(compound.Stream("Large"), large);
    EXPECT_TRUE(compound.Has("Storage"));
    EXPECT_FALSE(compound.Has("Inner"));
    EXPECT_EQ(compound.Stream("Inner"), std::nullopt);
}

TEST(CompoundFile, KeepsControlCharactersInNames)
{
    const std::string file =
        test::CompoundFile({{"\x06"
                             "DataSpaces/Version",
                             "1"}});

    EXPECT_TRUE(
        CompoundFile(file).Has("\x06"
                               "DataSpaces"));
}

TEST(CompoundFile, IsEmptyWhenItCanNotBeRead)
{
    EXPECT_TRUE(CompoundFile("").IsEmpty());
    EXPECT_TRUE(CompoundFile("no compound file").IsEmpty());
    EXPECT_TRUE(CompoundFile(test::CompoundFile({{"Workbook", "content"}}).substr(0, 600)).IsEmpty());
}

TEST(CompoundFile, GivesNoStreamThatIsCutOff)
{
    const std::string whole = test::CompoundFile({{"A", std::string(9000, 'a')}, {"B", std::string(9000, 'b')}});
    std::size_t complete = 0;
    for (std::size_t size = 0; size < whole.size(); size += 512) {
        const std::string cut = whole.substr(0, size);
        const CompoundFile compound(cut);

        const auto stream = compound.Stream("A");

        complete += stream.has_value();
        EXPECT_EQ(stream.value_or(std::string(9000, 'a')), std::string(9000, 'a')) << size;
    }
    EXPECT_LT(complete, whole.size() / 512);
}

TEST(CompoundFile, MadeWithOneStreamGivesItBack)
{
    for (const std::size_t size : {std::size_t{1}, std::size_t{4096}, std::size_t{300000}}) {
        const std::string stream(size, 's');

        const auto file = CompoundFileOf("Workbook", stream);

        ASSERT_TRUE(file);
        EXPECT_TRUE(IsCompoundFile(*file));
        EXPECT_EQ(CompoundFile(*file).Stream("Workbook"), stream);
    }
}

}  // namespace tessarine
