#include "saving/JournalText.h"

#include <gmock/gmock.h>

#include "platform/PathSeparator.h"
#include "saving/JournalEntries.h"

namespace tessarine
{

using testing::ElementsAre;
using testing::IsEmpty;

TEST(JournalText, GivesBackWhatWasWritten)
{
    const JournalFields first{"file", "/a\tb\nc\\d\\n\xE9", "1"};
    const JournalFields second{"content", "", "2"};

    EXPECT_THAT(ReadJournal(JournalLine(first) + JournalLine(second)), ElementsAre(first, second));
}

TEST(JournalText, IsReadUpToALineThatWasCutShort)
{
    const std::string first = JournalLine({"file", "/a"});
    const std::string second = JournalLine({"content", "1"});

    for (std::size_t length = 0; length < first.size(); ++length)
        EXPECT_THAT(ReadJournal(first.substr(0, length)), IsEmpty()) << length;
    for (std::size_t length = 0; length < second.size(); ++length)
        EXPECT_THAT(ReadJournal(first + second.substr(0, length)), ElementsAre(JournalFields{"file", "/a"})) << length;
}

TEST(JournalText, HasNoLineWithADamagedByte)
{
    const std::string line = JournalLine({"file", "/a\tb", "644"});

    for (std::size_t i = 0; i < line.size(); ++i) {
        std::string damaged = line;
        damaged[i] = static_cast<char>(damaged[i] ^ 1);
        EXPECT_THAT(ReadJournal(damaged), IsEmpty()) << i;
    }
}

TEST(JournalText, OfSomethingElseIsEmpty)
{
    EXPECT_THAT(ReadJournal("\n\n\n"), IsEmpty());
    EXPECT_THAT(ReadJournal("a text\nof two lines\n"), IsEmpty());
    EXPECT_THAT(ReadJournal(std::string(1000, '\0')), IsEmpty());
}

class JournalEntry : public testing::Test
{
protected:
    /// Of a path from the root on.
    const std::string root_ = PathSeparator == u'/' ? "/" : "C:\\";
    const FileEntry file_{root_ + "a.pptx", {1, 2, {3, 4}}, 0444, FileEntry::Dates{{-5, 6}, {7, 999'999'999}}};
    const WriteEntry write_{root_ + "a.pptx", {1, 4097, {3, 4}}, root_ + "b",
                            {5, 1, {7, 8}},   {0, 0xFFFFFFFF},   {0x12345678}};
};

TEST_F(JournalEntry, OfAFileComesBack)
{
    const auto entry = FileEntry::From(file_.Fields());

    ASSERT_TRUE(entry && entry->dates);
    EXPECT_EQ(entry->path, file_.path);
    EXPECT_EQ(entry->mark, file_.mark);
    EXPECT_EQ(entry->mode, 0444u);
    EXPECT_EQ(entry->dates->lastAccess.tv_sec, -5);
    EXPECT_EQ(entry->dates->lastWrite.tv_nsec, 999'999'999);
}

TEST_F(JournalEntry, OfAWriteComesBack)
{
    const auto entry = WriteEntry::From(write_.Fields());

    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->path, write_.path);
    EXPECT_EQ(entry->mark, write_.mark);
    EXPECT_EQ(entry->copy, write_.copy);
    EXPECT_EQ(entry->copyMark, write_.copyMark);
    EXPECT_EQ(entry->oldBlocks, write_.oldBlocks);
    EXPECT_EQ(entry->newBlocks, write_.newBlocks);
}

TEST_F(JournalEntry, IsRefusedWithAnyFieldMissingOrWrong)
{
    for (const JournalFields& good : {file_.Fields(), write_.Fields(), ContentEntry{{1, 2, {3, 4}}}.Fields()}) {
        for (std::size_t i = 0; i < good.size(); ++i) {
            JournalFields wrong = good;
            wrong[i] = "-x";
            EXPECT_FALSE(FileEntry::From(wrong) || WriteEntry::From(wrong) || ContentEntry::From(wrong)) << i;
            // All but the two dates must be there.
            wrong.assign(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(i));
            EXPECT_FALSE((i != 7 && FileEntry::From(wrong)) || WriteEntry::From(wrong) || ContentEntry::From(wrong))
                << i;
        }
        JournalFields longer = good;
        longer.emplace_back("1");
        EXPECT_FALSE(FileEntry::From(longer) || WriteEntry::From(longer) || ContentEntry::From(longer));
    }
}

TEST_F(JournalEntry, IsRefusedWithAPathThatIsNotFromTheRoot)
{
    for (const char* path : {"", "a.pptx", "./a"}) {
        FileEntry entry = file_;
        entry.path = path;
        EXPECT_FALSE(FileEntry::From(entry.Fields())) << path;
    }
    WriteEntry entry = write_;
    entry.copy = std::string("/a\0b", 4);
    EXPECT_FALSE(WriteEntry::From(entry.Fields()));
}

TEST_F(JournalEntry, IsRefusedWithASizeThatItsBlocksDoNotHave)
{
    for (const std::uint64_t size : {std::uint64_t{0}, std::uint64_t{4096}, std::uint64_t{8193}, ~std::uint64_t{0}}) {
        WriteEntry entry = write_;
        entry.mark.size = size;
        EXPECT_FALSE(WriteEntry::From(entry.Fields())) << size;
    }
}

}  // namespace tessarine
