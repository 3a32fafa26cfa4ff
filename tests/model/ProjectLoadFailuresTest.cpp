#include "model/ProjectFileTest.h"
#include "support/OrdinaryUser.h"

namespace tessarine
{
namespace
{

using namespace std::string_literals;
using test::StoredRecord;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using ProjectLoadFailure = ProjectFileTest;

constexpr const char* inLoadProject = "in procedure LoadProject at Line No. 0 of Class Module Project";

TEST_F(ProjectLoadFailure, OfAMissingFileIsError1WhateverItsExtension)
{
    const ProjectOwner project;

    for (const StringView name : {u"gone.tsq", u"gone.txt"}) {
        const Loaded loaded = Load(project, folder_.PathOf(name));
        EXPECT_FALSE(loaded.succeeded);
        EXPECT_EQ(loaded.error, 1);
    }
    EXPECT_EQ(Load(project, u"").error, 1);
    EXPECT_EQ(Load(project, folder_.Path()).error, 1);
    EXPECT_THAT(log_.Lines(), IsEmpty());
    EXPECT_FALSE(project->FileFailure);
}

TEST_F(ProjectLoadFailure, OfAPathWithANulIsError1)
{
    const ProjectOwner project;
    Save(project, path_);

    EXPECT_EQ(Load(project, path_ + u"\0.tsq"s).error, 1);
}

TEST_F(ProjectLoadFailure, OfAnotherExtensionIsError2)
{
    const ProjectOwner project;
    const std::string job = ContentOf(Save(project, path_));

    for (const StringView name : {u"job.txt", u"job", u"tsq", u"job.tsq.bak", u"job.", u"folder.tsq/job"}) {
        const Loaded loaded = Load(project, folder_.Write(name, job));
        EXPECT_FALSE(loaded.succeeded) << ToUtf8(name);
        EXPECT_EQ(loaded.error, 2) << ToUtf8(name);
    }
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ProjectLoadFailure, OfSomethingElseThanABagChangesNothing)
{
    const ProjectOwner project;
    AddItem(project, u"kept");
    project->options->BackupMode = true;
    folder_.Write(u"job.tsq", "not a project");

    const Loaded loaded = Load(project, path_, 77);

    EXPECT_FALSE(loaded.succeeded);
    EXPECT_EQ(loaded.error, 77);
    EXPECT_EQ(project->FindAndReplaceList->Item(1)->FindWhat, u"kept");
    EXPECT_TRUE(project->options->BackupMode);
    EXPECT_THAT(log_.Lines(), ElementsAre("Error 321 (Invalid file format: this is not a project file: " +
                                          ToUtf8(path_) + ") " + inLoadProject));
    ASSERT_TRUE(project->FileFailure);
    EXPECT_EQ(project->FileFailure->number, 321);
}

TEST_F(ProjectLoadFailure, OfAnEmptyFileIsLogged)
{
    const ProjectOwner project;
    folder_.Write(u"job.tsq", "");

    EXPECT_FALSE(Load(project, path_).succeeded);

    EXPECT_THAT(log_.Lines(), ElementsAre(HasSubstr("this is not a project file")));
}

TEST_F(ProjectLoadFailure, OfATruncatedFileChangesNothing)
{
    const ProjectOwner saved;
    AddItem(saved, u"a", u"b");
    saved->CustomProperies->Add(u"name", u"value");
    const std::string whole = ContentOf(Save(saved, path_));
    const ProjectOwner project;
    AddItem(project, u"kept");

    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Loaded loaded = Load(project, folder_.Write(u"cut.tsq", whole.substr(0, length)));
        ASSERT_FALSE(loaded.succeeded) << length;
        ASSERT_EQ(loaded.error, 0);
    }

    EXPECT_EQ(project->FindAndReplaceList->Item(1)->FindWhat, u"kept");
    EXPECT_EQ(project->CustomProperies->Count(), 0);
    EXPECT_EQ(log_.Lines().size(), whole.size());
}

TEST_F(ProjectLoadFailure, RefusesAHugeBlockWithoutReadingIt)
{
    const ProjectOwner project;
    std::string block = test::BlockAround("", 0);
    block.replace(12, 8, "\0\0\0\0\0\1\0\0"s);
    folder_.Write(u"job.tsq", block);
    SetSize(path_, std::uint64_t{1} << 40);

    EXPECT_FALSE(Load(project, path_).succeeded);

    EXPECT_THAT(log_.Lines(), ElementsAre(HasSubstr("the block gives its length as 1099511627776")));
}

TEST_F(ProjectLoadFailure, RefusesCountsBeyond16Bits)
{
    const ProjectOwner project;

    EXPECT_FALSE(Load(project, WriteBag({{"FindReplaceItemsCount", 32768}})).succeeded);
    EXPECT_FALSE(Load(project, WriteBag({{"CustomPropertyCount", 2147483647}})).succeeded);
    EXPECT_TRUE(Load(project, WriteBag({{"FindReplaceItemsCount", 32767}})).succeeded);

    EXPECT_EQ(project->FindAndReplaceList->Count(), 32767);
    EXPECT_THAT(log_.Lines(),
                ElementsAre("Error 6 (Overflow) "s + inLoadProject, "Error 6 (Overflow) "s + inLoadProject));
}

TEST_F(ProjectLoadFailure, OfATextWhereANumberBelongsChangesNothing)
{
    const ProjectOwner project;
    AddItem(project, u"kept");
    for (const char* key : {"AllowAlerts", "PowerpointVersion", "InSlides", "FindReplaceItemsCount"})
        EXPECT_FALSE(Load(project, WriteBag({{key, "x"s}})).succeeded) << key;
    EXPECT_FALSE(Load(project, WriteBag({{"FindReplaceItemsCount", 1}, {"Item0InSlides", "x"s}})).succeeded);

    EXPECT_EQ(project->FindAndReplaceList->Item(1)->FindWhat, u"kept");
    ASSERT_EQ(log_.Lines().size(), 5u);
    EXPECT_EQ(log_.Lines()[0], "Error 13 (Type mismatch: AllowAlerts is a text) "s + inLoadProject);
}

TEST_F(ProjectLoadFailure, KeepsTheCustomPropertiesBeforeOneWithoutAVerticalBar)
{
    for (const std::vector<StoredRecord>& bad :
         {std::vector<StoredRecord>{{"Propery2", "no bar"s}}, {{"Propery2", ""s}}, {}}) {
        const ProjectOwner project;
        AddItem(project, u"kept");
        project->options->BackupMode = true;
        std::vector<StoredRecord> records{{"CustomPropertyCount", 3}, {"Propery1", "a|b"s}, {"Propery3", "c|d"s}};
        records.insert(records.end(), bad.begin(), bad.end());

        const Loaded loaded = Load(project, WriteBag(records));

        EXPECT_FALSE(loaded.succeeded);
        EXPECT_EQ(loaded.error, 0);
        EXPECT_THAT(CustomPropertiesOf(project), ElementsAre("a=b"));
        EXPECT_EQ(project->FindAndReplaceList->Count(), 1);
        EXPECT_TRUE(project->options->BackupMode);
        EXPECT_EQ(log_.Lines().back(),
                  "Error 9 (Subscript out of range: Propery2 has no vertical bar) "s + inLoadProject);
    }
}

TEST_F(ProjectLoadFailure, TellsWhatIsWrongWithTheFile)
{
    const ProjectOwner project;
    const std::string whole = ContentOf(Save(project, path_));
    std::string later = whole;
    later[8] = 2;
    std::string endless = whole;
    endless[19] = 0x7F;  // the highest byte of its length
    const auto faultOf = [&](const std::string& bytes) {
        Load(project, folder_.Write(u"job.tsq", bytes));
        return project->LoadFault;
    };

    EXPECT_EQ(faultOf("PK and so on"), ProjectFault::OtherKind);
    EXPECT_EQ(faultOf(""), ProjectFault::Cut);
    for (const std::size_t length :
         {std::size_t{1}, std::size_t{8}, std::size_t{23}, std::size_t{24}, whole.size() - 1})
        EXPECT_EQ(faultOf(whole.substr(0, length)), ProjectFault::Cut) << length;
    EXPECT_EQ(faultOf(later), ProjectFault::OtherVersion);
    EXPECT_EQ(faultOf(endless), ProjectFault::Damaged);
    EXPECT_EQ(faultOf(whole.substr(0, whole.size() - 1) + '\0'), ProjectFault::Damaged);
    EXPECT_EQ(faultOf(whole), std::nullopt);
    Load(project, WriteBag({{"CustomPropertyCount", 1}, {"Propery1", "no bar"s}}));
    EXPECT_EQ(project->LoadFault, ProjectFault::Damaged);
    Load(project, folder_.PathOf(u"gone.tsq"));
    EXPECT_EQ(project->LoadFault, std::nullopt);
}

TEST_F(ProjectLoadFailure, ForgetsTheFailureOfAnEarlierCall)
{
    const ProjectOwner project;
    folder_.Write(u"job.tsq", "damaged");
    Load(project, path_);
    ASSERT_TRUE(project->FileFailure);

    Load(project, WriteBag({}));

    EXPECT_FALSE(project->FileFailure);
}

}  // namespace

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST_F(ProjectLoadFailure, OfAFileThatMayNotBeReadIsLogged)
{
    const ProjectOwner project;
    Save(project, path_);
    SetMode(folder_.Path(), 0755);
    SetMode(path_, 0000);
    const OrdinaryUser user;

    const Loaded loaded = Load(project, path_);

    EXPECT_FALSE(loaded.succeeded);
    EXPECT_EQ(loaded.error, 0);
    EXPECT_THAT(log_.Lines(), ElementsAre(HasSubstr(inLoadProject)));
}

#endif

}  // namespace tessarine
