#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/program/ProgramWindows.h"
#include "files/WindowsFiles.h"
#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"
#include "support/Deck.h"

// Presentations that another program, here this test's, holds open.

namespace tessarine::test
{
namespace
{

using testing::HasSubstr;

class HeldFilesProgramTest : public testing::Test
{
protected:
    HeldFilesProgramTest()
    {
        for (const char16_t* name : {u"decks/a.pptx", u"decks/b.pptx", u"decks/c.pptx"})
            program.folder.Write(name, before);
    }

    FileDescriptor Hold(StringView name, unsigned long share) const
    {
        FileDescriptor file = OpenExisting(NativePath(program.folder.PathOf(name)), GENERIC_READ, share);
        EXPECT_TRUE(file.IsOpen());
        return file;
    }

    std::string Content(StringView name) const { return ContentOf(program.folder.PathOf(name)); }

    const std::string before = Deck().Slide(Title(u"Fabrikam")).Bytes();
    Program program;
};

/// How much the other program lets others do with the file.
class HeldFile : public HeldFilesProgramTest, public testing::WithParamInterface<unsigned long>
{
};

TEST_P(HeldFile, FailsWithTheReasonAndTheOthersAreChanged)
{
    FileDescriptor held = Hold(u"decks/b.pptx", GetParam());

    const Outcome outcome = program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup", "decks"});
    held.Close();

    EXPECT_EQ(outcome.output,
              "Engine: built-in\n"
              "decks\\a.pptx: changed, 1 replaced\n"
              "    \"Fabrikam\" -> \"Contoso\"  slides 1\n"
              "decks\\b.pptx: failed: The file is in use by another program; close it there and run it again\n"
              "decks\\c.pptx: changed, 1 replaced\n"
              "    \"Fabrikam\" -> \"Contoso\"  slides 1\n"
              "\n"
              "3 files: 2 changed, 0 unchanged, 1 failed; 2 occurrences replaced\n");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(Content(u"decks/b.pptx"), before);
    EXPECT_EQ(Content(u"decks/b..bak"), "<missing>");
    EXPECT_NE(Content(u"decks/a.pptx"), before);
    EXPECT_NE(Content(u"decks/c.pptx"), before);
}

INSTANTIATE_TEST_SUITE_P(Program, HeldFile,
                         testing::Values(0ul, static_cast<unsigned long>(FILE_SHARE_READ),
                                         static_cast<unsigned long>(FILE_SHARE_READ | FILE_SHARE_WRITE)),
                         [](const auto& test) {
                             return test.param == 0                 ? "SharedWithNobody"
                                    : test.param == FILE_SHARE_READ ? "SharedWithReaders"
                                                                    : "SharedWithWriters";
                         });

TEST_F(HeldFilesProgramTest, AFindFailsOnlyWhereReadingIsNotShared)
{
    const FileDescriptor alone = Hold(u"decks/a.pptx", 0);
    const FileDescriptor shared = Hold(u"decks/b.pptx", FILE_SHARE_READ);

    const Outcome outcome = program.Run({"find", "--find", "Fabrikam", "decks"});

    EXPECT_THAT(outcome.output, HasSubstr("decks\\a.pptx: failed: "));
    EXPECT_THAT(outcome.output, HasSubstr("decks\\b.pptx: 1 found\n"));
    EXPECT_THAT(outcome.output, HasSubstr("3 files: 2 with hits, 0 without, 1 failed; 2 occurrences found\n"));
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(HeldFilesProgramTest, ABackupThatIsHeldIsNotRestoredAndTheOthersAre)
{
    program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup", "decks"});
    const std::string changed = Content(u"decks/b.pptx");
    ASSERT_NE(changed, before);
    FileDescriptor held = Hold(u"decks/b..bak", 0);

    const Outcome outcome = program.Run({"restore", "decks"});
    held.Close();

    EXPECT_THAT(outcome.output, HasSubstr("decks\\b.pptx: failed: "));
    EXPECT_THAT(outcome.output, HasSubstr("3 files: 2 restored, 0 without a backup, 1 failed\n"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(Content(u"decks/a.pptx"), before);
    EXPECT_EQ(Content(u"decks/b.pptx"), changed);
    EXPECT_EQ(Content(u"decks/b..bak"), before);
    EXPECT_EQ(Content(u"decks/c.pptx"), before);
}

}  // namespace
}  // namespace tessarine::test
