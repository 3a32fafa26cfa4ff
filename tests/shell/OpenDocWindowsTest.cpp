#include "shell/OpenDoc.h"

#include <gmock/gmock.h>

#include <filesystem>

#include <QTest>

#include "i18n/QtText.h"
#include "OpeningTest.h"
#include "platform/NativePath.h"
#include "platform/ProgramFolder.h"
#include "shell/FileAssociation.h"
#include "shell/FileAssociationKeys.h"
#include "support/ErrorLogRecorder.h"
#include "support/qt/TestKey.h"

// The system's own shell: what it says of files that it can't open, and what it starts for a registered type.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class ShellTest : public OpeningTest
{
protected:
    const ErrorLogRecorder log_;
};

TEST_F(ShellTest, TellsAMissingFile)
{
    ExpectThatAMissingFileIsTold();

    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ShellTest, TellsAMissingFolder)
{
    // Windows says 3, Wine 2.
    const std::int32_t code = Open(folder_.PathOf(u"gone\\gone.txt"));

    EXPECT_THAT(code, testing::AnyOf(3, 2));
    EXPECT_EQ(errorText_, code == 3 ? u"Path not found" : u"File not found");
}

TEST_F(ShellTest, TellsThatNoProgramOpensTheType)
{
    EXPECT_EQ(Open(folder_.Write(u"a.unheard-of")), 31);

    EXPECT_EQ(errorText_, u"No association for file extension");
}

TEST_F(ShellTest, TellsANameThatTheCodePageHasNoLettersFor)
{
    EXPECT_EQ(Open(folder_.Write(u"報告.unheard-of")), 31);
    EXPECT_EQ(Open(folder_.PathOf(u"報告.txt")), 2);
}

/// A type of the test's own whose program writes down its arguments.
class RegisteredTypeTest : public ShellTest
{
protected:
    RegisteredTypeTest()
    {
        const std::filesystem::path programs = NativePath(previousFolder_);
        std::filesystem::copy_file(programs / L"record-arguments.exe", NativePath(folder_.PathOf(u"tessarine.exe")));
        SetProgramFolder(folder_.Path());
        RegisterFileType(u"tessarine-test-file", u"tessarine-test", u"A file of a test",
                         folder_.PathOf(u"tessarine.exe, 30001"));
    }
    ~RegisteredTypeTest() override
    {
        RegDeleteTreeW(HKEY_CLASSES_ROOT, L".tessarine-test");
        RegDeleteTreeW(HKEY_CLASSES_ROOT, L"tessarine-test-file");
        SetProgramFolder(previousFolder_);
    }

    void SetUp() override
    {
        if (!StoredIn(HKEY_CLASSES_ROOT, L".tessarine-test", L""))
            GTEST_SKIP() << "this user may not register file types for all";
    }

    /// What the program was given; it is waited for.
    std::vector<String> Arguments()
    {
        const String file = folder_.PathOf(u"arguments");
        EXPECT_TRUE(QTest::qWaitFor([&] { return ContentOf(file) != "<missing>"; }, 30'000));
        const std::string bytes = ContentOf(file);
        const QString text(reinterpret_cast<const QChar*>(bytes.data()), static_cast<qsizetype>(bytes.size() / 2));
        std::vector<String> arguments;
        for (const QString& line : text.split('\n', Qt::SkipEmptyParts))
            arguments.push_back(FromQt(line));
        return arguments;
    }

private:
    // Before the test's own: where this program lies, beside the one that writes down arguments.
    const String previousFolder_ = ProgramFolder();
};

TEST_F(RegisteredTypeTest, IsOpenedByItsProgram)
{
    const String file = folder_.Write(u"job.tessarine-test");

    EXPECT_GE(Open(file), 33);

    EXPECT_THAT(Arguments(), ElementsAre(file));
    EXPECT_EQ(errorText_, u"as before");
}

TEST_F(RegisteredTypeTest, ReachesItsProgramInSeveralArgumentsForAPathWithBlanks)
{
    EXPECT_GE(Open(folder_.Write(u"my first job.tessarine-test")), 33);

    EXPECT_THAT(Arguments(), ElementsAre(folder_.PathOf(u"my"), u"first", u"job.tessarine-test"));
}

TEST_F(RegisteredTypeTest, IsOpenedUnderANameThatTheCodePageHasNoLettersFor)
{
    const String file = folder_.Write(u"報告.tessarine-test");

    EXPECT_GE(Open(file), 33);

    EXPECT_THAT(Arguments(), ElementsAre(file));
}

}  // namespace
}  // namespace tessarine
