#include "run/BackupRecord.h"

#include <gtest/gtest.h>

namespace tessarine
{
namespace
{

RecordedBackup Backup(const String& name, const String& original)
{
    return {name, original, {1234567890123, 0x0A0B0C0D}};
}

std::string_view WithoutEnd(std::string_view line)
{
    return line.substr(0, line.size() - 1);
}

TEST(BackupRecordLine, HoldsNamesSizeAndChecksum)
{
    EXPECT_EQ(LineOf(Backup(u"a..bak", u"a.pptx")), "a..bak\ta.pptx\t1234567890123\t0A0B0C0D\n");
}

TEST(BackupRecordLine, GivesAnyNameBack)
{
    for (const std::string name :
         {"a b", "Zürich 😀", "tab\tline\nreturn\r\x01\x7F", "back\\slash\\x41", "caf\xE9\xFF", " "}) {
        const std::string line = LineOf(Backup(FromUtf8(name), FromUtf8(name + ".pptx")));

        EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1) << name;
        const auto read = RecordedBackupIn(WithoutEnd(line));
        ASSERT_TRUE(read) << name;
        EXPECT_EQ(ToUtf8(read->name), name);
        EXPECT_EQ(ToUtf8(read->original), name + ".pptx");
        EXPECT_EQ(read->content, Backup({}, {}).content);
    }
}

TEST(BackupRecordLine, ThatIsCutTellsNothing)
{
    const std::string line = LineOf(Backup(u"a..bak", u"a.pptx"));
    for (std::size_t length = 0; length + 1 < line.size(); ++length)
        EXPECT_FALSE(RecordedBackupIn(std::string_view(line).substr(0, length))) << length;
}

TEST(BackupRecordLine, ThatIsNoneTellsNothing)
{
    for (const char* line : {"", "text", "a\tb\tc\t0A0B0C0D", "a\tb\t1\t0A0B0C0X", "a\tb\t-1\t0A0B0C0D",
                             "a\\\tb\t1\t0A0B0C0D", "a\\x4\tb\t1\t0A0B0C0D", "\tb\t1\t0A0B0C0D", "a\t\t1\t0A0B0C0D",
                             "a\tb\t99999999999999999999\t0A0B0C0D", "a\tb\t1\t0A0B0C0D "})
        EXPECT_FALSE(RecordedBackupIn(line)) << line;
}

}  // namespace
}  // namespace tessarine
