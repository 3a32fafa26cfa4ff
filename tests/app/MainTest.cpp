#include "app/Main.h"

#include <gmock/gmock.h>

#include <optional>
#include <utility>

#include "app/GlobalState.h"
#include "ChosenLanguage.h"
#include "files/Files.h"
#include "log/ErrorLog.h"
#include "platform/SpecialFolders.h"
#include "support/FakePowerPoint.h"
#include "support/KilledRun.h"
#include "support/MessageRecorder.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

/// A user's account and a program folder of the test's own; the desktop's services write down what was asked of them.
class MainTest : public testing::Test
{
protected:
    MainTest()
    {
        program_.Write(u"Languages/English.lng",
                       "[Global Msg]\n1028=cannot create\n1029=other error\n1059=%d to put right\n1060=without it?\n");
        language_.emplace(program_.Path(), u"");
    }

    ~MainTest() override
    {
        SetSpecialFolders(std::move(foldersBefore_));
        if (CurrentProject)
            CurrentProject->FindAndReplaceList.reset();
        CurrentProject.reset();
        ApplicationDataFolder.clear();
    }

    void Start() { Main({.builtIn = builtIn_, .powerPoint = powerPoint_.Provider()}, desktop_); }

    String DataFile(StringView name) const { return dataHome_.PathOf(u"Tessarine/Tessarine/" + String(name)); }

    /// Leaves a default project as an earlier session would have.
    void SaveDefaultProject(const std::vector<String>& propertyValues)
    {
        dataHome_.MakeFolder(u"Tessarine/Tessarine");
        const ProjectOwner project;
        for (const String& value : propertyValues)
            project->CustomProperies->Add(u"p", value);
        String path = DataFile(u"Default.tsq");
        project->SaveAsProject(path, true);
    }

    std::vector<String> PropertyValues() const
    {
        std::vector<String> values;
        for (std::int32_t i = 1; i <= CurrentProject->CustomProperies->Count(); ++i)
            values.push_back(CurrentProject->CustomProperies->Item(i)->PropertyValue);
        return values;
    }

    TemporaryFolder dataHome_;
    SpecialFoldersPort foldersBefore_ = SetSpecialFolders([this](std::int32_t) { return dataHome_.Path(); });
    TemporaryFolder program_;
    std::optional<ChosenLanguage> language_;
    MessageRecorder messages_;
    FakePowerPoint powerPoint_;
    FakePowerPoint engine_;
    std::shared_ptr<powerpoint::Provider> builtIn_;
    bool isAgreed_ = false;
    bool isSecondInstance_ = false;
    std::vector<String> registered_;
    int windows_ = 0;
    Desktop desktop_{
        [this] { return isSecondInstance_; },
        [this](const String& fileClass, const String& extension, const String& description, const String& icon) {
            registered_ = {fileClass, extension, description, icon};
        },
        [this] { ++windows_; }, [this] { return isAgreed_; }, [this] { isAgreed_ = true; }};
};

TEST_F(MainTest, ShowsTheWindowOnANewAccount)
{
    Start();

    EXPECT_EQ(windows_, 1);
    EXPECT_TRUE(FolderExists(DataFile(u"")));
    EXPECT_FALSE(FileExists(DataFile(u"Default.tsq")));
    EXPECT_THAT(PropertyValues(), ElementsAre(u"", u"EXTERNAL", u""));
    EXPECT_EQ(CurrentProject->CustomProperies->Item(1)->ProperyName, u"FindAndReplaceFilePath");
    EXPECT_EQ(CurrentProject->CustomProperies->Item(2)->ProperyName, u"FindAndReplaceListSource");
    EXPECT_EQ(CurrentProject->CustomProperies->Item(3)->ProperyName, u"LANG");
    EXPECT_EQ(CurrentLanguageFile, u"English.lng");
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(MainTest, DoesNothingInASecondInstance)
{
    isSecondInstance_ = true;

    Start();

    EXPECT_EQ(windows_, 0);
    EXPECT_EQ(CurrentProject, nullptr);
    EXPECT_FALSE(FolderExists(dataHome_.PathOf(u"Tessarine")));
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(MainTest, TellsThatTheDataFolderHasNoPlace)
{
    const SpecialFoldersPort before = SetSpecialFolders([](std::int32_t) { return String(); });

    Start();

    SetSpecialFolders(before);
    EXPECT_EQ(windows_, 0);
    EXPECT_EQ(CurrentProject, nullptr);
    EXPECT_THAT(messages_.Messages(), ElementsAre(MessageRecorder::Message{u"Unable to get file storage folder path",
                                                                           MessageIcon::Critical, MessageButtons::Ok}));
}

TEST_F(MainTest, EndsSilentlyWhenTheDataFolderCannotBeMade)
{
    dataHome_.Write(u"Tessarine", "a file in the way");

    Start();

    EXPECT_EQ(windows_, 0);
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(MainTest, TakesTheLanguageFromTheDefaultProjectsThirdProperty)
{
    program_.Write(u"Languages/Polish.lng", "");
    SaveDefaultProject({u"", u"INTERNAL", u"Polish.lng"});

    Start();

    EXPECT_EQ(CurrentLanguageFile, u"Polish.lng");
    EXPECT_THAT(PropertyValues(), ElementsAre(u"", u"INTERNAL", u"Polish.lng"));
}

TEST_F(MainTest, SpeaksEnglishWhenTheDefaultProjectHasTwoProperties)
{
    SaveDefaultProject({u"", u"INTERNAL"});

    Start();

    EXPECT_EQ(CurrentLanguageFile, u"English.lng");
    EXPECT_EQ(windows_, 1);
}

TEST_F(MainTest, SpeaksEnglishWhenTheLanguageFileIsGone)
{
    SaveDefaultProject({u"", u"INTERNAL", u"Klingon.lng"});

    Start();

    EXPECT_EQ(CurrentLanguageFile, u"English.lng");
    EXPECT_THAT(PropertyValues(), ElementsAre(u"", u"INTERNAL", u"Klingon.lng"));
}

TEST_F(MainTest, IgnoresADamagedDefaultProject)
{
    dataHome_.Write(u"Tessarine/Tessarine/Default.tsq", "no project");

    Start();

    EXPECT_EQ(windows_, 1);
    EXPECT_EQ(CurrentLanguageFile, u"English.lng");
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(MainTest, RegistersTheFileTypeAtEveryStart)
{
    Start();

    EXPECT_THAT(registered_, ElementsAre(u"tsqfile", u"tsq", u"Tessarine-PowerPoint Setting File",
                                         program_.PathOf(u"tessarine.exe, 30001")));
}

TEST_F(MainTest, StartsAndStopsPowerPointOnce)
{
    Start();

    EXPECT_EQ(powerPoint_.script.Count("CreateApplication"), 1);
    EXPECT_EQ(powerPoint_.script.Count("Application.Quit"), 1);
    EXPECT_EQ(powerPoint_.Running(), 0);
}

TEST_F(MainTest, ShowsTwoBoxesWhenPowerPointCannotBeCreated)
{
    powerPoint_.script.Fail("CreateApplication", 429);

    Start();

    EXPECT_EQ(windows_, 0);
    EXPECT_THAT(messages_.Messages(),
                ElementsAre(MessageRecorder::Message{u"cannot create", MessageIcon::Critical, MessageButtons::Ok},
                            MessageRecorder::Message{u"PowerPoint has not been installed.", MessageIcon::None,
                                                     MessageButtons::Ok}));
}

TEST_F(MainTest, TellsAnyOtherFailureOfPowerPointApart)
{
    powerPoint_.script.Fail("Application.Quit", 462);

    Start();

    EXPECT_EQ(windows_, 0);
    ASSERT_EQ(messages_.Messages().size(), 2u);
    EXPECT_EQ(messages_.Messages().front().text, u"other error");
}

/// An installed PowerPoint, and the engine that comes with the program.
class EngineChoice : public MainTest
{
protected:
    EngineChoice() { builtIn_ = engine_.Provider(); }
    ~EngineChoice() override { IsBuiltInEngine = false; }

    void LosePowerPoint() { powerPoint_.script.Fail("CreateApplication", 429); }

    /// Whose PowerPoint a run gets.
    bool IsBuiltInUsed()
    {
        const int before = engine_.script.Count("AttachToRunning");
        CurrentProject->UnloadPowerPoint();
        return engine_.script.Count("AttachToRunning") > before;
    }

    const MessageRecorder::Message question_{u"without it?", MessageIcon::Question, MessageButtons::YesNo};
};

TEST_F(EngineChoice, IsOfferedWherePowerPointCannotBeCreated)
{
    LosePowerPoint();
    messages_.Next(MessageAnswer::Yes);

    Start();

    EXPECT_THAT(
        messages_.Messages(),
        ElementsAre(MessageRecorder::Message{u"cannot create", MessageIcon::Critical, MessageButtons::Ok}, question_));
    EXPECT_EQ(windows_, 1);
    EXPECT_TRUE(isAgreed_);
    EXPECT_TRUE(IsBuiltInEngine);
    EXPECT_TRUE(IsBuiltInUsed());
}

TEST_F(EngineChoice, EndsTheStartWhenItIsDeclined)
{
    LosePowerPoint();
    messages_.Next(MessageAnswer::No);

    Start();

    ASSERT_EQ(messages_.Messages().size(), 3u);
    EXPECT_EQ(messages_.Messages()[1], question_);
    EXPECT_EQ(messages_.Messages()[2].text, u"PowerPoint has not been installed.");
    EXPECT_EQ(windows_, 0);
    EXPECT_FALSE(isAgreed_);
}

TEST_F(EngineChoice, IsOfferedOnce)
{
    LosePowerPoint();
    isAgreed_ = true;

    Start();

    EXPECT_THAT(messages_.Messages(), IsEmpty());
    EXPECT_EQ(windows_, 1);
    EXPECT_TRUE(IsBuiltInEngine);
    EXPECT_TRUE(IsBuiltInUsed());
}

TEST_F(EngineChoice, IsPowerPointAgainOnceThatCanBeStarted)
{
    isAgreed_ = true;

    Start();

    EXPECT_EQ(windows_, 1);
    EXPECT_FALSE(IsBuiltInEngine);
    EXPECT_FALSE(IsBuiltInUsed());
}

TEST_F(EngineChoice, IsNoneWhereThereIsOneEngine)
{
    Main({.builtIn = builtIn_}, desktop_);

    EXPECT_THAT(messages_.Messages(), IsEmpty());
    EXPECT_EQ(windows_, 1);
    EXPECT_TRUE(IsBuiltInEngine);
    EXPECT_TRUE(IsBuiltInUsed());
}

TEST_F(MainTest, LogsAFailureAndShowsNoWindow)
{
    desktop_.RegisterFileType = [](const auto&...) { throw Failure(70, u"no"); };

    Start();

    EXPECT_EQ(windows_, 0);
    EXPECT_THAT(ContentOf(DataFile(u"Errors.Log")),
                testing::StartsWith("Error 70 (no) in procedure Main at Line No. 0 of Module modMain- "));
}

TEST_F(MainTest, ShowsTheWindowWhenTheLogCannotBeWritten)
{
    dataHome_.MakeFolder(u"Tessarine/Tessarine/Errors.Log");
    dataHome_.Write(u"Tessarine/Tessarine/Default.tsq", "no project");

    Start();

    EXPECT_EQ(windows_, 1);
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

}  // namespace

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST_F(MainTest, PutsRightWhatAKilledRunLeft)
{
    const TemporaryFolder decks;
    const String deck = decks.Write(u"a.pptx");
    SetMode(deck, 0444);
    ApplicationDataFolder = dataHome_.MakeFolder(u"Tessarine/Tessarine");
    LeaveWritable(deck);
    ASSERT_EQ(ModeOf(deck), 0644u);

    Start();

    EXPECT_EQ(ModeOf(deck), 0444u);
    EXPECT_EQ(windows_, 1);
    EXPECT_THAT(messages_.Messages(),
                ElementsAre(MessageRecorder::Message{u"1 to put right", MessageIcon::Information, MessageButtons::Ok}));
    EXPECT_THAT(
        ContentOf(DataFile(u"Errors.Log")),
        testing::StartsWith(ToUtf8(deck) + ": a run that was killed had left it writable; its mode is put back- "));
}

#endif

}  // namespace tessarine
