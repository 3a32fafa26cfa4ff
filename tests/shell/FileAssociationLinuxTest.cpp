#include "shell/FileAssociation.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <map>

#include <QTest>

#include "files/Files.h"
#include "i18n/QtText.h"
#include "icons/Icons.h"
#include "platform/Failure.h"
#include "platform/ProgramFolder.h"
#include "shell/DesktopTool.h"
#include "support/ErrorLogRecorder.h"
#include "support/OrdinaryUser.h"
#include "support/qt/UserFolders.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

constexpr auto desktopEntry = u"applications/tessarine.desktop";
constexpr auto mimePackage = u"mime/packages/tessarine.xml";
constexpr auto programIcon = u"icons/hicolor/scalable/apps/tessarine.svg";
constexpr auto typeIcon = u"icons/hicolor/scalable/mimetypes/application-x-tsqfile.svg";

/// A program in a folder of its own, an empty data home, and the desktop's tools only recorded.
class FileAssociationTest : public testing::Test
{
protected:
    FileAssociationTest()
    {
        previousFolder_ = SetProgramFolder(u"/opt/My 100% Tools");
        previousTool_ = SetDesktopTool([this](const QString& program, const QStringList& arguments) {
            tools_.emplace_back(program.toStdString(), FromQt(arguments.join('|')));
        });
    }
    ~FileAssociationTest() override
    {
        SetDesktopTool(previousTool_);
        SetProgramFolder(previousFolder_);
    }

    static void Register()
    {
        RegisterFileType(u"tsqfile", u"tsq", u"Tessarine-PowerPoint Setting File", u"tessarine.exe, 30001");
    }

    String PathOf(StringView name) const { return user_.data.PathOf(name); }

    /// Every file and folder of the data home, with what changes when it is written.
    std::map<std::string, std::pair<ino_t, std::int64_t>> Snapshot() const
    {
        std::map<std::string, std::pair<ino_t, std::int64_t>> entries;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(ToUtf8(user_.data.Path()))) {
            struct stat status = {};
            EXPECT_EQ(stat(entry.path().c_str(), &status), 0);
            entries[entry.path()] = {status.st_ino, status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec};
        }
        return entries;
    }

    ErrorLogRecorder log_;
    UserFolders user_;
    std::vector<std::pair<std::string, String>> tools_;
    String previousFolder_;
    DesktopToolPort previousTool_;
};

TEST_F(FileAssociationTest, WritesADesktopEntryThatCallsTheProgram)
{
    Register();

    const std::string entry = ContentOf(PathOf(desktopEntry));
    EXPECT_THAT(entry, HasSubstr("\nExec=\"/opt/My 100%% Tools/tessarine\" %f\n"));
    EXPECT_THAT(entry, HasSubstr("\nMimeType=application/x-tsqfile;\n"));
    EXPECT_THAT(entry, HasSubstr("\nName=Tessarine\n"));
    EXPECT_THAT(entry, HasSubstr("\nIcon=tessarine\n"));
}

TEST_F(FileAssociationTest, WritesTheTypeOfProjectFiles)
{
    Register();

    const std::string package = ContentOf(PathOf(mimePackage));
    EXPECT_THAT(package, HasSubstr("<mime-type type=\"application/x-tsqfile\">"));
    EXPECT_THAT(package, HasSubstr("<glob pattern=\"*.tsq\"/>"));
    EXPECT_THAT(package, HasSubstr("<comment>Tessarine-PowerPoint Setting File</comment>"));
}

TEST_F(FileAssociationTest, WritesTheIconsOfProgramAndType)
{
    Register();

    EXPECT_EQ(ContentOf(PathOf(programIcon)), IconDrawing("tessarine").toStdString());
    EXPECT_EQ(ContentOf(PathOf(typeIcon)), IconDrawing("project").toStdString());
}

TEST_F(FileAssociationTest, WritesNothingElse)
{
    Register();

    std::vector<std::string> files;
    const std::filesystem::path home = ToUtf8(user_.data.Path());
    for (const auto& entry : std::filesystem::recursive_directory_iterator(home))
        if (entry.is_regular_file())
            files.push_back(entry.path().lexically_relative(home));
    EXPECT_THAT(files, testing::UnorderedElementsAre(ToUtf8(desktopEntry), ToUtf8(mimePackage), ToUtf8(programIcon),
                                                     ToUtf8(typeIcon)));
    EXPECT_TRUE(std::filesystem::is_empty(ToUtf8(user_.configuration.Path())));
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(FileAssociationTest, HasTheDesktopTakeNoteOfWhatWasWritten)
{
    Register();

    EXPECT_THAT(tools_, ElementsAre(Pair("update-mime-database", PathOf(u"mime")),
                                    Pair("update-desktop-database", PathOf(u"applications"))));
}

TEST_F(FileAssociationTest, LeavesWhatStandsThereAlready)
{
    Register();
    const auto before = Snapshot();
    tools_.clear();

    Register();

    EXPECT_EQ(before.size(), 12u);  // four files and the folders above them
    EXPECT_EQ(Snapshot(), before);
    EXPECT_THAT(tools_, IsEmpty());
}

TEST_F(FileAssociationTest, FollowsAProgramThatHasMoved)
{
    Register();
    tools_.clear();
    SetProgramFolder(u"/usr/bin");

    Register();

    EXPECT_THAT(ContentOf(PathOf(desktopEntry)), HasSubstr("\nExec=\"/usr/bin/tessarine\" %f\n"));
    EXPECT_THAT(tools_, ElementsAre(Pair("update-desktop-database", PathOf(u"applications"))));
}

/// The program as it is installed below a prefix, and a desktop that looks for entries there.
class InstalledFileAssociationTest : public FileAssociationTest
{
protected:
    InstalledFileAssociationTest()
    {
        prefix_.Write(u"share/applications/tessarine.desktop", "[Desktop Entry]\n");
        prefix_.MakeFolder(u"share/tessarine");
        SetProgramFolder(prefix_.MakeFolder(u"bin"));
        LookBelow(prefix_.PathOf(u"share/"));
    }
    ~InstalledFileAssociationTest() override { qputenv("XDG_DATA_DIRS", previousPlaces_); }

    static void LookBelow(const String& place)
    {
        qputenv("XDG_DATA_DIRS", QFile::encodeName(ToQt(u"/nowhere:" + place)));
    }

    const TemporaryFolder prefix_;
    const QByteArray previousPlaces_ = qgetenv("XDG_DATA_DIRS");
};

TEST_F(InstalledFileAssociationTest, LeavesTheUsersFolderAlone)
{
    Register();

    EXPECT_TRUE(std::filesystem::is_empty(ToUtf8(user_.data.Path())));
    EXPECT_THAT(tools_, IsEmpty());
}

TEST_F(InstalledFileAssociationTest, BringsAnEntryOfTheUsersUpToDate)
{
    user_.data.Write(desktopEntry, "[Desktop Entry]\nExec=/gone/tessarine\n");

    Register();

    const std::string path = ToUtf8(prefix_.PathOf(u"bin")) + "/tessarine";
    EXPECT_THAT(ContentOf(PathOf(desktopEntry)), HasSubstr("\nTryExec=" + path + "\n"));
}

TEST_F(InstalledFileAssociationTest, RegistersWhenTheDesktopLooksElsewhere)
{
    LookBelow(u"/elsewhere");

    Register();

    EXPECT_TRUE(FileExists(PathOf(desktopEntry)));
}

TEST_F(InstalledFileAssociationTest, RegistersWhenNoEntryWasInstalled)
{
    std::filesystem::remove(ToUtf8(prefix_.PathOf(u"share/applications/tessarine.desktop")));

    Register();

    EXPECT_TRUE(FileExists(PathOf(desktopEntry)));
}

TEST_F(FileAssociationTest, SaysWhatAnInstallationSays)
{
    SetProgramFolder(u"/usr/bin");
    Register();

    QString entry = QString::fromStdString(ContentOf(PathOf(desktopEntry)));
    entry.replace("\"/usr/bin/tessarine\"", "tessarine").replace("/usr/bin/tessarine", "tessarine");
    EXPECT_EQ(entry.toStdString(), ContentOf(TESSARINE_PACKAGING u"/tessarine.desktop"));
    EXPECT_EQ(ContentOf(PathOf(mimePackage)), ContentOf(TESSARINE_PACKAGING u"/tessarine.xml"));
}

TEST_F(FileAssociationTest, LeavesTheUsersChoiceOfPrograms)
{
    const String choice = user_.data.Write(u"applications/mimeapps.list", "[Default Applications]\n");
    const String other = user_.data.Write(u"applications/other.desktop", "[Desktop Entry]\n");

    Register();

    EXPECT_EQ(ContentOf(choice), "[Default Applications]\n");
    EXPECT_EQ(ContentOf(other), "[Desktop Entry]\n");
}

TEST_F(FileAssociationTest, PassesOverADataHomeThatMayNotBeWritten)
{
    SetMode(user_.data.Path(), 0555);
    const OrdinaryUser user;

    Register();

    EXPECT_TRUE(std::filesystem::is_empty(ToUtf8(user_.data.Path())));
    EXPECT_THAT(tools_, IsEmpty());
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(FileAssociationTest, WritesTheRestWhenOneFileCannotBeWritten)
{
    user_.data.Write(u"applications", "a file in the way");

    Register();

    EXPECT_THAT(ContentOf(PathOf(mimePackage)), HasSubstr("tsqfile"));
    EXPECT_THAT(tools_, ElementsAre(Pair("update-mime-database", PathOf(u"mime"))));
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(FileAssociationTest, LogsAFailureOfAnotherKind)
{
    SetDesktopTool([](const auto&...) { throw Failure(5, u"no"); });

    Register();

    EXPECT_THAT(log_.Lines(), ElementsAre("Error 5 (no) in procedure RegisterFileType at Line No. 0 of "
                                          "Module FileAssociation"));
}

TEST_F(FileAssociationTest, StartsTheToolsThatThereAre)
{
    const TemporaryFolder tools;
    const String tool = tools.Write(u"update-mime-database", "#!/bin/sh\necho \"$1\" >\"$0.called\"\n");
    SetMode(tool, 0755);
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(ToQt(tools.Path())));
    SetDesktopTool({});

    Register();

    qputenv("PATH", path);
    const std::string expected = ToUtf8(PathOf(u"mime")) + "\n";
    EXPECT_TRUE(QTest::qWaitFor([&] { return ContentOf(tool + u".called") == expected; }, 30'000));
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

}  // namespace
}  // namespace tessarine
