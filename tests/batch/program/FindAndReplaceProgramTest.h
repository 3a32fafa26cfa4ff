#pragma once

#include <chrono>
#include <filesystem>

#include <gtest/gtest.h>

#include "batch/program/Program.h"
#include "platform/NativePath.h"
#include "support/Deck.h"

namespace tessarine::test
{

/// "a.pptx" with hits in a title, a text box and the notes; "b.pptx" without any.
class FindAndReplaceProgramTest : public testing::Test
{
protected:
    FindAndReplaceProgramTest()
    {
        Write(u"decks/a.pptx",
              Deck()
                  .Slide(Title(u"Fabrikam in 2023"), TextBox(u"About Fabrikam"), NotesPage(u"Ask Fabrikam"))
                  .Slide(Title(Paragraph(TextRun(u"Fab").Bold(), TextRun(u"rikam again")))));
        Write(u"decks/b.pptx", Deck().Slide(Title(u"Nothing of the kind")));
    }

    void Write(StringView name, const Deck& deck) { program.folder.Write(name, deck.Bytes()); }

    String PathOf(StringView name) const { return program.folder.PathOf(name); }

    std::filesystem::file_time_type ModifiedAt(StringView name) const
    {
        return std::filesystem::last_write_time(NativePath(PathOf(name)));
    }

    /// Puts a file's modification time back by a day, so that a change shows, and gives it.
    std::filesystem::file_time_type Age(StringView name) const
    {
        std::filesystem::last_write_time(NativePath(PathOf(name)), ModifiedAt(name) - std::chrono::hours(24));
        return ModifiedAt(name);
    }

    Program program;
};

}  // namespace tessarine::test
