#include <gtest/gtest.h>

#include "batch/program/Program.h"
#include "support/Deck.h"

namespace tessarine::test
{
namespace
{

class BackupProgramTest : public testing::Test
{
protected:
    BackupProgramTest()
    {
        program.folder.Write(u"decks/a.pptx", Deck().Slide(Title(u"Fabrikam")).Bytes());
        program.folder.Write(u"decks/b.pptx", Deck().Slide(Title(u"Litware")).Bytes());
    }

    std::string Content(StringView name) const { return ContentOf(program.folder.PathOf(name)); }

    Program program;
};

TEST_F(BackupProgramTest, RestoreUndoesAReplaceWithBackup)
{
    const std::string before = Content(u"decks/a.pptx");
    program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup", "decks/a.pptx"});
    ASSERT_NE(Content(u"decks/a.pptx"), before);

    const Outcome outcome = program.Run({"restore", "--verbose", "decks"});

    EXPECT_EQ(outcome.output,
              "decks/a.pptx: restored from decks/a..bak\n"
              "decks/b.pptx: no backup\n"
              "\n"
              "2 files: 1 restored, 1 without a backup, 0 failed\n");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(Content(u"decks/a.pptx"), before);
    EXPECT_EQ(Content(u"decks/a..bak"), before);
}

TEST_F(BackupProgramTest, CleanDeletesTheBackups)
{
    program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup", "decks"});

    const Outcome outcome = program.Run({"clean", "--format", "json", "decks", "gone.pptx"});

    EXPECT_EQ(outcome.output, R"({"file":"decks/a.pptx","backup":"decks/a..bak","status":1,"error":""})"
                              "\n"
                              R"({"file":"decks/b.pptx","backup":"decks/b..bak","status":1,"error":""})"
                              "\n"
                              R"({"file":"gone.pptx","backup":"","status":0,"error":"File not found."})"
                              "\n"
                              R"({"summary":{"files":3,"removed":2,"unchanged":0,"failed":1}})"
                              "\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(Content(u"decks/a..bak"), "<missing>");
}

TEST_F(BackupProgramTest, ChangesNoFileWhoseBackupWouldOverwriteAnother)
{
    program.folder.Write(u"decks/a.pptm", Deck().Kind(DeckKind::Pptm).Slide(Title(u"Fabrikam")).Bytes());
    const std::string before = Content(u"decks/a.pptx");

    const Outcome outcome = program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--backup", "decks"});

    EXPECT_EQ(outcome.output,
              "decks/a.pptm: changed, 1 replaced\n"
              "    \"Fabrikam\" -> \"Contoso\"  slides 1\n"
              "decks/a.pptx: failed: Its backup would overwrite another file of this job, or that file's backup: "
              "decks/a..bak\n"
              "\n"
              "3 files: 1 changed, 1 unchanged, 1 failed; 1 occurrence replaced\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(Content(u"decks/a.pptx"), before);
}

}  // namespace
}  // namespace tessarine::test
