#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>

#include "ui/main/MainWindowTest.h"

// How many presentations the choice holds, as the tab of the files tells it.

namespace tessarine
{
namespace
{

class FileCounterTest : public MainWindowTest
{
protected:
    std::string Shown() { return The<QLabel>("lblFileCount").text().toStdString(); }

    /// Longer than any count here takes; a test ends as soon as it is through.
    static constexpr int patience = 60'000;  // milliseconds

    /// Waits for what the label tells in the end.
    void ExpectShown(const std::string& text)
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return Shown() == text; }, patience)) << Shown() << " in place of " << text;
    }

    /// A folder with presentations, one of them read-only, and one below it.
    String Decks()
    {
        for (const char16_t* name : {u"decks/a.pptx", u"decks/b.ppt", u"decks/c.txt", u"decks/below/d.pptx"})
            folder.Write(name);
        SetMode(folder.PathOf(u"decks/b.ppt"), 0444);
        return folder.PathOf(u"decks");
    }

    void UseFolder(const String& path)
    {
        Window();
        ShowTab(1);
        Type("txtStartFolder", ToQt(path));
    }
};

TEST_F(FileCounterTest, TellsThePresentationsOfAFolderAndTheReadOnlyOnes)
{
    UseFolder(Decks());

    ExpectShown("Presentations: 2, read-only: 1");
    ClickBox("chkIncludesubfolders");
    ExpectShown("Presentations: 3, read-only: 1");
}

TEST_F(FileCounterTest, TellsThoseOfAList)
{
    const std::string decks = ToUtf8(Decks());
    Window();
    ShowTab(1);
    The<QRadioButton>("optFileProcess(1)").setChecked(true);

    Type("txtGetFileName", ToQt(folder.Write(u"files.txt", decks + "/a.pptx\r\n" + decks + "/missing.pptx\r\n")));
    ExpectShown("Presentations: 1, read-only: 0");

    Type("txtGetFileName", ToQt(folder.Write(u"unix.txt", decks + "/a.pptx\n" + decks + "/b.ppt\n")));
    ExpectShown("Presentations: 0, read-only: 0 " + ToUtf8(GlobalMsg(u"List.LineFeeds")));
}

TEST_F(FileCounterTest, TellsOfAFolderOrAListThatIsMissing)
{
    UseFolder(folder.PathOf(u"missing"));
    ExpectShown(ToUtf8(GlobalMsg(u"1047")));

    The<QRadioButton>("optFileProcess(1)").setChecked(true);
    Type("txtGetFileName", ToQt(folder.PathOf(u"missing.txt")));
    ExpectShown(ToUtf8(GlobalMsg(u"1050")));
}

TEST_F(FileCounterTest, FollowsTheLastOfManyChoices)
{
    const String decks = Decks();
    for (int i = 0; i < 20; ++i) {
        UseFolder(folder.PathOf(u"missing"));
        UseFolder(decks);
        QCoreApplication::processEvents();
    }

    ExpectShown("Presentations: 2, read-only: 1");
    The<QLineEdit>("txtStartFolder").clear();
    EXPECT_EQ(Shown(), "");
}

TEST_F(FileCounterTest, CountsAnewWhenTheTabIsShownAgain)
{
    UseFolder(Decks());
    ExpectShown("Presentations: 2, read-only: 1");
    folder.Write(u"decks/new.pptx");

    ShowTab(0);
    EXPECT_EQ(Shown(), "");
    ShowTab(1);

    ExpectShown("Presentations: 3, read-only: 1");
}

TEST_F(FileCounterTest, LeavesTheFilesOfTheLastCountOfARunAlone)
{
    CurrentProject->FilesToProcess = {u"of a run"};

    UseFolder(Decks());
    ExpectShown("Presentations: 2, read-only: 1");

    EXPECT_THAT(CurrentProject->FilesToProcess, testing::ElementsAre(String(u"of a run")));
    EXPECT_EQ(Log(), "");
}

TEST_F(FileCounterTest, FollowsAChangeOfLanguage)
{
    UseFolder(Decks());
    ExpectShown("Presentations: 2, read-only: 1");

    CurrentLanguageFile = u"German.lng";
    Window().LoadLng();

    EXPECT_EQ(Shown(), "Präsentationen: 2, schreibgeschützt: 1");
}

TEST_F(FileCounterTest, ThatStillCountsDoesNotKeepTheWindow)
{
    for (int i = 0; i < 300; ++i)
        folder.Write(u"many/" + FromUtf8(std::to_string(i)) + u".pptx");
    UseFolder(folder.PathOf(u"many"));

    EXPECT_TRUE(QTest::qWaitFor([&] { return !Shown().empty(); }, patience)) << "it has begun";
    // The window goes with the test, whether the count is through or not.
}

}  // namespace
}  // namespace tessarine
