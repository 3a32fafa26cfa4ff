#include <filesystem>
#include <fstream>

#include "DeckOnDisk.h"
#include "files/FileLock.h"
#include "files/RandomAccessFile.h"
#include "log/ErrorLog.h"
#include "office/builtin/FileKind.h"
#include "office/builtin/Provider.h"
#include "support/CompoundFile.h"
#include "support/WarningRecorder.h"

// Presentations that other programs touch while the engine has them open, and those that are written in place.

namespace tessarine::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

Deck OneSlide()
{
    return Deck().Slide(Title(u"Fabrikam"));
}

std::vector<std::string> NamesIn(const String& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(ToUtf8(folder)))
        names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

TEST(DisturbedSave, NoticesAnotherProgramsSave)
{
    const DeckOnDisk deck(OneSlide());
    const std::string theirs = Deck().Slide(Title(u"Litware")).Bytes();
    const auto presentation = deck.Open();
    ReplaceInShape(*presentation, 1, 1, u"Fabrikam", u"Contoso");
    deck.Folder().Write(u"deck.pptx", theirs);

    const Raised raised = RaisedBy([&] { presentation->Save(); });

    EXPECT_THAT(raised,
                FailsWith(FailureNumber::SharingViolation, "was changed by another program since it was opened"));
    EXPECT_TRUE(deck.Bytes() == theirs);
    EXPECT_THAT(NamesIn(deck.Folder().Path()), ElementsAre("deck.pptx"));
}

TEST(DisturbedSave, WithoutEditsNoticesItAsWell)
{
    const DeckOnDisk deck(OneSlide());
    const auto presentation = deck.Open();
    std::ofstream(ToUtf8(deck.Path()), std::ios::app) << "more";

    EXPECT_THAT(RaisedBy([&] { presentation->Save(); }),
                FailsWith(FailureNumber::SharingViolation, "was changed by another program since it was opened"));
}

TEST(DisturbedSave, OfALockedDeckKeepsTheLock)
{
    const DeckOnDisk deck(OneSlide());
    const FileLock lock(deck.Path());
    const auto presentation = deck.Open();
    ReplaceInShape(*presentation, 1, 1, u"Fabrikam", u"Contoso");

    presentation->Save();

    EXPECT_TRUE(FileLock::IsHeldHere(*RandomAccessFile::IdOf(deck.Path())));
}

TEST(DisturbedOpen, OfABinaryFileThatIsCutMeanwhileIsAFailure)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"deck.ppt", CompoundFile({{"PowerPoint Document", std::string(300000, 'x')}}));
    const RandomAccessFile file(path);
    std::filesystem::resize_file(ToUtf8(path), 600);

    EXPECT_THAT(RaisedBy([&] { builtin::FileKindOf(file); }),
                FailsWith(FailureNumber::FileCorrupt, "The file ends too early"));
}

/// Presentations are opened on terms that allow to write into files themselves; their copies go into a data folder of
/// its own.
class SaveInPlace : public testing::Test
{
protected:
    SaveInPlace() { ApplicationDataFolder = data_.Path(); }
    ~SaveInPlace() override { ApplicationDataFolder = before_; }

    const String before_ = ApplicationDataFolder;
    const TemporaryFolder data_;
    const WarningRecorder warnings_;
    const DeckOnDisk deck_{OneSlide()};
    const String otherName_ = deck_.Folder().PathOf(u"other.pptx");
};

}  // namespace

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST_F(SaveInPlace, ShowsTheNewTextUnderEveryName)
{
    std::filesystem::create_hard_link(ToUtf8(deck_.Path()), ToUtf8(otherName_));
    const auto application = builtin::CreateProvider({.inPlaceLinks = true})->CreateApplication();
    const auto presentation = application->Presentations()->Open(deck_.Path(), 0, 0, 0);
    ReplaceInShape(*presentation, 1, 1, u"Fabrikam", u"Contoso AG");

    presentation->Save();
    presentation->Close();

    EXPECT_EQ(TextOf(deck_.Package(), 1, 1), u"Contoso AG");
    EXPECT_TRUE(std::filesystem::equivalent(ToUtf8(deck_.Path()), ToUtf8(otherName_)));
    EXPECT_EQ(ConsistencyFault(deck_.Path()), "");
    EXPECT_THAT(warnings_.Warnings(), IsEmpty());
    EXPECT_THAT(NamesIn(deck_.Folder().Path()), ElementsAre("deck.pptx", "other.pptx"));
    EXPECT_THAT(NamesIn(data_.Path()), IsEmpty());
}

TEST_F(SaveInPlace, GivesTheBytesThatAnyOtherSaveGives)
{
    const DeckOnDisk other(OneSlide());
    other.Change([](auto& presentation) { ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"X"); });
    std::filesystem::create_hard_link(ToUtf8(deck_.Path()), ToUtf8(otherName_));
    const auto application = builtin::CreateProvider({.inPlaceLinks = true})->CreateApplication();
    const auto presentation = application->Presentations()->Open(deck_.Path(), 0, 0, 0);
    ReplaceInShape(*presentation, 1, 1, u"Fabrikam", u"X");

    presentation->Save();

    EXPECT_TRUE(deck_.Bytes() == other.Bytes());
}

TEST_F(SaveInPlace, EndsThePresentation)
{
    const DeckOnDisk deck(OneSlide().Slide(Title(u"never read before the save")));
    std::filesystem::create_hard_link(ToUtf8(deck.Path()), ToUtf8(deck.Folder().PathOf(u"other.pptx")));
    const auto application = builtin::CreateProvider({.inPlaceLinks = true})->CreateApplication();
    const auto presentation = application->Presentations()->Open(deck.Path(), 0, 0, 0);
    ReplaceInShape(*presentation, 1, 1, u"Fabrikam", u"Contoso");
    presentation->Save();
    const std::string saved = deck.Bytes();

    EXPECT_THAT(RaisedBy([&] { ShapeOf(*presentation, 2, 1); }),
                FailsWith(FailureNumber::WriteFault, "saved in place"));
    EXPECT_THAT(RaisedBy([&] { presentation->Save(); }), FailsWith(FailureNumber::WriteFault, "saved in place"));
    EXPECT_TRUE(deck.Bytes() == saved);
}

TEST_F(SaveInPlace, IsNotDoneUnasked)
{
    std::filesystem::create_hard_link(ToUtf8(deck_.Path()), ToUtf8(otherName_));
    const std::string before = deck_.Bytes();

    deck_.Change([](auto& presentation) { ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso"); });

    EXPECT_EQ(TextOf(deck_.Package(), 1, 1), u"Contoso");
    EXPECT_TRUE(ContentOf(otherName_) == before);
    EXPECT_THAT(warnings_.Warnings(),
                ElementsAre(testing::Pair(deck_.Path(), "has 1 more name that keeps the old text")));
}

#endif

}  // namespace tessarine::test
