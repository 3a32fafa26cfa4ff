#include <gmock/gmock.h>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <filesystem>

#include "model/Project.h"
#include "RunTest.h"
#include "support/FailingFolders.h"
#include "support/OrdinaryUser.h"

namespace tessarine
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class FileSet : public RunTest
{
protected:
    FileSet()
    {
        project_->options->ComaSepAllowedExtensions = u"*.Ppt*";
        project_->options->FileToProcessFolderPath = folder_.Path();
    }

    std::int32_t CountOfList(const std::string& content)
    {
        project_->options->FileToProcessSourceType = 1;
        project_->options->FileToProcessFilepath = folder_.Write(u"list.txt", content);
        return project_->GetFileToProcessFileCount();
    }

    std::int32_t CountOfFolder(const String& patterns = u"*.Ppt*")
    {
        project_->options->ComaSepAllowedExtensions = patterns;
        return project_->GetFileToProcessFileCount();
    }

    std::string Full(StringView name) const { return ToUtf8(folder_.PathOf(name)); }

    std::vector<std::string> Files() const
    {
        std::vector<std::string> files;
        for (const String& path : project_->FilesToProcess)
            files.push_back(Short(ToUtf8(path)));
        return files;
    }
};

TEST_F(FileSet, OfAFolderIsItsMatchingFiles)
{
    for (const char16_t* name : {u"b.ppt", u"a.pptx", u"c.potx", u"d.txt"})
        folder_.Write(name);

    EXPECT_EQ(CountOfFolder(), 2);
    EXPECT_THAT(Files(), ElementsAre("a.pptx", "b.ppt"));
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(FileSet, DoesNotLookIntoSubfoldersUnasked)
{
    folder_.Write(u"a.ppt");
    folder_.Write(u"sub/b.ppt");

    EXPECT_EQ(CountOfFolder(), 1);
}

TEST_F(FileSet, TakesAFoldersFilesBeforeItsSubfolders)
{
    for (const char16_t* name : {u"z.ppt", u"a/y.ppt", u"a/deep/x.ppt", u"b/w.ppt"})
        folder_.Write(name);
    project_->options->Include_Subfolders = true;

    EXPECT_EQ(CountOfFolder(), 4);
    EXPECT_THAT(Files(), ElementsAre("z.ppt", "a/y.ppt", "a/deep/x.ppt", "b/w.ppt"));
}

TEST_F(FileSet, IgnoresTheCaseOfExtensions)
{
    folder_.Write(u"A.PPT");
    folder_.Write(u"b.ppt");

    EXPECT_EQ(CountOfFolder(), 2);
    EXPECT_EQ(CountOfFolder(u"*.pPt*"), 2);
}

TEST_F(FileSet, LooksAtTheLastExtensionAlone)
{
    folder_.Write(u"a.ppt.bak");

    EXPECT_EQ(CountOfFolder(), 0);
}

TEST_F(FileSet, LeavesOutBackupsOfAnEarlierRun)
{
    for (const char16_t* name : {u"a.bak", u"b..bak", u"a.ppt", u"b.pptx"})
        folder_.Write(name);

    EXPECT_EQ(CountOfFolder(), 2);
    EXPECT_THAT(Files(), ElementsAre("a.ppt", "b.pptx"));
}

TEST_F(FileSet, TakesResourceForkFilesLikeAnyOther)
{
    folder_.Write(u"._a.pptx");

    EXPECT_EQ(CountOfFolder(), 1);
}

TEST_F(FileSet, NeverTakesLockFiles)
{
    folder_.Write(u"~$a.pptx");
    folder_.Write(u".~lock.a.pptx#");
    folder_.Write(u"b.pptx");

    EXPECT_EQ(CountOfFolder(), 1);
    EXPECT_EQ(CountOfFolder(u"*"), 1);
    EXPECT_EQ(CountOfList(Full(u"~$a.pptx") + "\r\n" + Full(u"b.pptx")), 1);
    EXPECT_THAT(Files(), ElementsAre("b.pptx"));
}

TEST_F(FileSet, OfARelativeFolderHoldsFullPaths)
{
    folder_.Write(u"sub/a.ppt");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(ToUtf8(folder_.Path()));
    project_->options->FileToProcessFolderPath = u"./sub";

    EXPECT_EQ(CountOfFolder(), 1);
    std::filesystem::current_path(before);

    EXPECT_THAT(project_->FilesToProcess, ElementsAre(folder_.PathOf(u"sub/a.ppt")));
}

TEST_F(FileSet, NeedsAPatternThatEndsInAWildcard)
{
    folder_.Write(u"a.ppt");

    EXPECT_EQ(CountOfFolder(u".ppt"), 0);
    EXPECT_EQ(CountOfFolder(u"*.ppt"), 0);
    EXPECT_EQ(CountOfFolder(u"*.ppt?"), 1);
    EXPECT_EQ(CountOfFolder(u"*.pp[a-t]*"), 1);
    EXPECT_EQ(CountOfFolder(u"*.pp[!t]*"), 0);
}

TEST_F(FileSet, AppliesEveryPatternBetweenSemicolons)
{
    for (const char16_t* name : {u"a.ppt", u"b.pot", u"c.pps", u"d,e.txt"})
        folder_.Write(name);

    EXPECT_EQ(CountOfFolder(u"*.ppt*;*.pot*"), 2);
    EXPECT_THAT(project_->AllowedExtensionPatterns, ElementsAre(u"*.ppt*", u"*.pot*"));
    EXPECT_EQ(CountOfFolder(u"*.ppt*,*.pot*"), 0);
    EXPECT_EQ(CountOfFolder(u";*.pps*;"), 1);
    EXPECT_EQ(CountOfFolder(u"*.ppt* ; *.pot*"), 0);
}

TEST_F(FileSet, IsEmptyWithoutAPattern)
{
    folder_.Write(u"a.ppt");

    EXPECT_EQ(CountOfFolder(u""), 0);
    EXPECT_THAT(project_->AllowedExtensionPatterns, IsEmpty());
}

TEST_F(FileSet, LogsABrokenPatternForEachFileAndTakesNone)
{
    folder_.Write(u"a.ppt");
    folder_.Write(u"b.ppt");

    EXPECT_EQ(CountOfFolder(u"*.[p"), 0);

    const std::string line =
        "Error 93 (Invalid pattern string) in procedure CheckFileExt at Line No. 0 of Class Module Project";
    EXPECT_THAT(log_.Lines(), ElementsAre(line, line));
}

TEST_F(FileSet, IgnoresTheDotsOfFoldersForFilesWithAnExtension)
{
    folder_.Write(u"v1.ppt.d/a.ppt");
    folder_.Write(u"v1.ppt.d/b.txt");
    project_->options->Include_Subfolders = true;

    EXPECT_EQ(CountOfFolder(), 1);
    EXPECT_THAT(Files(), ElementsAre("v1.ppt.d/a.ppt"));
}

TEST_F(FileSet, ReadsAFoldersDotAsTheExtensionOfABareName)
{
    folder_.Write(u"decks.ppt/noextension");
    project_->options->Include_Subfolders = true;

    EXPECT_EQ(CountOfFolder(), 1);
    EXPECT_THAT(Files(), ElementsAre("decks.ppt/noextension"));
}

TEST_F(FileSet, LogsAPathWithoutAnyDot)
{
    ASSERT_EQ(folder_.Path().find(u'.'), String::npos);
    folder_.Write(u"noextension");
    folder_.Write(u"a.ppt");

    EXPECT_EQ(CountOfFolder(), 1);

    EXPECT_THAT(log_.Lines(), ElementsAre("Error 5 (Invalid procedure call or argument) in procedure CheckFileExt at "
                                          "Line No. 0 of Class Module Project"));
}

TEST_F(FileSet, OfAMissingFolderIsMinusOneAndEmpty)
{
    project_->FilesToProcess = {u"left over"};
    project_->options->FileToProcessFolderPath = folder_.PathOf(u"missing");

    EXPECT_EQ(CountOfFolder(), -1);

    EXPECT_THAT(Files(), IsEmpty());
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(FileSet, IsBuiltAnewByEachCount)
{
    folder_.Write(u"a.ppt");
    CountOfFolder();

    EXPECT_EQ(CountOfFolder(), 1);
    EXPECT_THAT(Files(), ElementsAre("a.ppt"));
}

TEST_F(FileSet, KeepsOddNamesAsTheyAre)
{
    folder_.Write(u"a b;c.ppt");
    folder_.Write(u"schön שלום 😀.ppt");

    EXPECT_EQ(CountOfFolder(), 2);
    EXPECT_THAT(Files(), ElementsAre("a b;c.ppt", "schön שלום 😀.ppt"));
}

TEST_F(FileSet, OfAListIsItsExistingMatchingFilesInOrder)
{
    for (const char16_t* name : {u"b.ppt", u"a.ppt", u"c.txt"})
        folder_.Write(name);

    EXPECT_EQ(
        CountOfList(Full(u"b.ppt") + "\r\n" + Full(u"missing.ppt") + "\r\n" + Full(u"c.txt") + "\r\n" + Full(u"a.ppt")),
        2);
    EXPECT_THAT(Files(), ElementsAre("b.ppt", "a.ppt"));
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(FileSet, OfAListTakesAnySourceTypeButZero)
{
    folder_.Write(u"a.ppt");
    folder_.Write(u"b.ppt");
    CountOfList(Full(u"a.ppt"));
    project_->options->FileToProcessSourceType = -7;

    EXPECT_EQ(project_->GetFileToProcessFileCount(), 1);
}

TEST_F(FileSet, OfAnEmptyListIsEmpty)
{
    EXPECT_EQ(CountOfList(""), 0);
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(FileSet, IgnoresABlankLastLine)
{
    folder_.Write(u"a.ppt");

    EXPECT_EQ(CountOfList(Full(u"a.ppt") + "\r\n"), 1);
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(FileSet, HoldsAFileTwiceThatTheListNamesTwice)
{
    folder_.Write(u"a.ppt");

    EXPECT_EQ(CountOfList(Full(u"a.ppt") + "\r\n" + Full(u"a.ppt")), 2);
    EXPECT_THAT(Files(), ElementsAre("a.ppt", "a.ppt"));
}

TEST_F(FileSet, DoesNotSplitAListAtALineFeedAlone)
{
    folder_.Write(u"a.ppt");
    folder_.Write(u"b.ppt");

    EXPECT_EQ(CountOfList(Full(u"a.ppt") + "\n" + Full(u"b.ppt")), 0);
}

TEST_F(FileSet, CountsTheFilesThatLineFeedsHide)
{
    folder_.Write(u"a.ppt");
    folder_.Write(u"b.ppt");
    folder_.Write(u"c.txt");

    EXPECT_EQ(CountOfList(Full(u"a.ppt") + "\n" + Full(u"b.ppt") + "\n" + Full(u"c.txt") + "\nnodot\n"), 0);
    EXPECT_EQ(project_->HiddenByLineFeeds, 2);

    EXPECT_EQ(CountOfList(Full(u"a.ppt") + "\r\n" + Full(u"b.ppt") + "\n"), 1);
    EXPECT_EQ(project_->HiddenByLineFeeds, 1);

    EXPECT_EQ(CountOfList(Full(u"a.ppt") + "\r\nmissing.ppt\n"), 1);
    EXPECT_EQ(project_->HiddenByLineFeeds, 0);
}

TEST_F(FileSet, DoesNotTrimTheLinesOfAList)
{
    folder_.Write(u"a.ppt");
    folder_.Write(u" b.ppt");

    EXPECT_EQ(CountOfList(" " + Full(u"a.ppt") + "\r\n" + Full(u" b.ppt")), 1);
    EXPECT_THAT(Files(), ElementsAre(" b.ppt"));
}

TEST_F(FileSet, FindsTheFilesOfAListInAnyScript)
{
    folder_.Write(u"schön שלום 😀.ppt");

    EXPECT_EQ(CountOfList(Full(u"schön שלום 😀.ppt")), 1);
}

TEST_F(FileSet, SkipsAByteOrderMarkOfAList)
{
    folder_.Write(u"a.ppt");

    EXPECT_EQ(CountOfList("\xEF\xBB\xBF" + Full(u"a.ppt")), 1);
    EXPECT_EQ(CountOfList("\xEF\xBB\xBF"), 0);
}

TEST_F(FileSet, OfAMissingListSaysSo)
{
    project_->FilesToProcess = {u"left over"};
    project_->options->FileToProcessSourceType = 1;
    project_->options->FileToProcessFilepath = folder_.PathOf(u"missing.txt");

    EXPECT_EQ(project_->GetFileToProcessFileCount(), 0);

    EXPECT_THAT(messages_.Messages(), ElementsAre(MessageRecorder::Message{
                                          u"File is not Available.", MessageIcon::Exclamation, MessageButtons::Ok}));
}

TEST_F(FileSet, WithoutOptionsIsEmptyAndLogged)
{
    project_->options.reset();

    EXPECT_EQ(project_->GetFileToProcessFileCount(), 0);

    EXPECT_THAT(log_.Lines(), ElementsAre("Error 91 (Object variable or With block variable not set) in procedure "
                                          "GetFileToProcessFileCount at Line No. 0 of Class Module Project"));
}

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST_F(FileSet, KeepsNamesInForeignBytes)
{
    const std::string foreign = "caf\xE9.ppt";
    folder_.Write(FromUtf8(foreign));
    folder_.Write(u"schön שלום 😀.ppt");

    EXPECT_EQ(CountOfFolder(), 2);
    EXPECT_THAT(Files(), ElementsAre(foreign, "schön שלום 😀.ppt"));
}

TEST_F(FileSet, FindsTheFilesOfAListWithALineFeedInTheirNames)
{
    folder_.Write(u"a.ppt");
    folder_.Write(u"c\nd.ppt");

    EXPECT_EQ(CountOfList(Full(u"c\nd.ppt") + "\r\n" + Full(u"a.ppt")), 2);
}

TEST_F(FileSet, TellsBlanksAtTheEndsOfNamesApart)
{
    folder_.Write(u"a.ppt");
    folder_.Write(u" b.ppt ");

    EXPECT_EQ(CountOfList(" " + Full(u"a.ppt") + "\r\n" + Full(u"a.ppt") + " \r\n" + Full(u" b.ppt ")), 1);
    EXPECT_THAT(Files(), ElementsAre(" b.ppt "));
}

TEST_F(FileSet, FindsTheFilesOfAListUnderForeignBytes)
{
    folder_.Write(FromUtf8("caf\xE9.ppt"));

    EXPECT_EQ(CountOfList(Full(FromUtf8("caf\xE9.ppt"))), 1);
}

TEST_F(FileSet, GoesThroughLinkedFoldersOnceEach)
{
    const TemporaryFolder elsewhere;
    elsewhere.Write(u"deep/d.ppt");
    folder_.Write(u"a.ppt");
    folder_.Write(u"z/c.ppt");
    const auto link = [this](const String& target, const String& name) {
        std::filesystem::create_directory_symlink(ToUtf8(target), ToUtf8(folder_.PathOf(name)));
    };
    link(u".", u"loop");
    link(folder_.PathOf(u"z"), u"a link to z");
    link(elsewhere.Path(), u"elsewhere");
    link(elsewhere.Path(), u"elsewhere again");
    link(u"..", u"z/up");
    project_->options->Include_Subfolders = true;

    EXPECT_EQ(CountOfFolder(), 3);

    EXPECT_THAT(Files(), ElementsAre("a.ppt", "z/c.ppt", "elsewhere/deep/d.ppt"));
    EXPECT_EQ(project_->LinkedFoldersLeftOut, 0);
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(FileSet, CountsLinkedFoldersThatItIsNotToFollow)
{
    folder_.Write(u"sub/a.ppt");
    std::filesystem::create_directory_symlink("sub", ToUtf8(folder_.PathOf(u"link")));
    std::filesystem::create_directory_symlink("..", ToUtf8(folder_.PathOf(u"sub/up")));
    project_->options->Include_Subfolders = true;
    project_->FollowsLinkedFolders = false;

    CountOfFolder();
    EXPECT_EQ(CountOfFolder(), 1);

    EXPECT_EQ(project_->LinkedFoldersLeftOut, 2);
}

TEST_F(FileSet, TakesNothingOfAFolderThatCannotBeReadToItsEnd)
{
    for (const char16_t* name : {u"a.ppt", u"b.ppt", u"c.ppt"})
        folder_.Write(name);

    std::int32_t count = -5;
    {
        const FailingFolders failing(4);
        count = CountOfFolder();
    }

    EXPECT_EQ(count, 0);
    ASSERT_THAT(project_->UnreadFolders, SizeIs(1));
    EXPECT_EQ(project_->UnreadFolders[0].path, folder_.Path());
    EXPECT_THAT(ToUtf8(project_->UnreadFolders[0].reason), HasSubstr("to its end (Input/output error)"));
    EXPECT_THAT(log_.Lines(),
                ElementsAre("Error 76 (Path not found: could not read the folder " + ToUtf8(folder_.Path()) +
                            " to its end (Input/output error)) in procedure RetriveFolder at Line No. 0 "
                            "of Class Module Project"));

    EXPECT_EQ(CountOfFolder(), 3);
    EXPECT_THAT(project_->UnreadFolders, IsEmpty());
}

TEST_F(FileSet, OfAListThatIsAPipeIsEmptyAndLogged)
{
    ASSERT_EQ(mkfifo(ToUtf8(folder_.PathOf(u"list.txt")).c_str(), 0600), 0);
    project_->options->FileToProcessSourceType = 1;
    project_->options->FileToProcessFilepath = folder_.PathOf(u"list.txt");

    EXPECT_EQ(project_->GetFileToProcessFileCount(), 0);

    EXPECT_THAT(messages_.Messages(), SizeIs(1));
}

TEST_F(FileSet, LogsAFolderThatCannotBeReadAndGoesOn)
{
    folder_.Write(u"closed/a.ppt");
    folder_.Write(u"open/b.ppt");
    SetMode(folder_.Path(), 0755);
    SetMode(folder_.PathOf(u"closed"), 0000);
    project_->options->Include_Subfolders = true;

    std::int32_t count = 0;
    {
        const OrdinaryUser user;
        count = CountOfFolder();
    }

    EXPECT_EQ(count, 1);
    EXPECT_THAT(Files(), ElementsAre("open/b.ppt"));
    EXPECT_THAT(Log(), ElementsAre("Error 76 (Path not found: could not read the folder closed) in procedure "
                                   "RetriveFolder at Line No. 0 of Class Module Project"));
}

TEST_F(FileSet, LogsAListThatCannotBeRead)
{
    CountOfList("");
    SetMode(folder_.Path(), 0755);
    SetMode(folder_.PathOf(u"list.txt"), 0000);

    std::int32_t count = -5;
    {
        const OrdinaryUser user;
        count = project_->GetFileToProcessFileCount();
    }

    EXPECT_EQ(count, 0);
    EXPECT_THAT(Log(), ElementsAre("Error 70 (Permission denied: could not open list.txt) in procedure RetriveFile at "
                                   "Line No. 0 of Class Module Project"));
    ASSERT_TRUE(project_->UnreadList);
    EXPECT_EQ(project_->UnreadList->number, FailureNumber::PermissionDenied);
    SetMode(folder_.PathOf(u"list.txt"), 0644);
    project_->GetFileToProcessFileCount();
    EXPECT_FALSE(project_->UnreadList);
}

#else

// The system itself passes over blanks at the end of a name.
TEST_F(FileSet, KeepsABlankAtTheEndOfALine)
{
    folder_.Write(u"a.ppt");

    EXPECT_EQ(CountOfList(Full(u"a.ppt") + " \r\n"), 1);
    EXPECT_THAT(Files(), ElementsAre("a.ppt "));
}

#endif

}  // namespace tessarine
