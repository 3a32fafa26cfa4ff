#include <gmock/gmock.h>

#include <QFile>
#include <QProcess>
#include <QTest>

#include "files/Files.h"
#include "i18n/QtText.h"
#include "support/TemporaryFolder.h"

// The desktop program itself, as a process.

namespace tessarine
{
namespace
{

/// A user's home, and the program started in it without a screen.
class ProgramTest : public testing::Test
{
protected:
    ProgramTest()
    {
        environment_ = QProcessEnvironment::systemEnvironment();
        environment_.insert("HOME", ToQt(home.Path()));
        environment_.insert("XDG_DATA_HOME", ToQt(home.MakeFolder(u"data")));
        environment_.insert("XDG_CONFIG_HOME", ToQt(home.MakeFolder(u"config")));
        environment_.insert("XDG_RUNTIME_DIR", ToQt(home.MakeFolder(u"run")));
        SetMode(home.PathOf(u"run"), 0700);
        environment_.insert("QT_QPA_PLATFORM", "offscreen");
    }

    void Start(QProcess& program, const QStringList& arguments = {})
    {
        program.setProcessEnvironment(environment_);
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(QStringLiteral(TESSARINE_PROGRAM), arguments);
        ASSERT_TRUE(program.waitForStarted());
    }

    /// Waits until the program has come as far as its file type, which it registers right before its window.
    void WaitUntilUp()
    {
        ASSERT_TRUE(QTest::qWaitFor([this] { return FileExists(home.PathOf(desktopEntry)); }, patience));
    }

    static constexpr int patience = 30'000;  // milliseconds
    static constexpr const char16_t* desktopEntry = u"data/applications/tessarine.desktop";
    const TemporaryFolder home;

private:
    QProcessEnvironment environment_;
};

TEST_F(ProgramTest, StaysUpAndMakesItsFolderAndFileType)
{
    QProcess program;
    Start(program);
    WaitUntilUp();

    EXPECT_FALSE(program.waitForFinished(100));
    EXPECT_TRUE(FolderExists(home.PathOf(u"data/Tessarine/Tessarine")));
    EXPECT_FALSE(FileExists(home.PathOf(u"data/Tessarine/Tessarine/Default.tsq"))) << "only a close writes it";
    EXPECT_FALSE(FileExists(home.PathOf(u"data/Tessarine/Tessarine/Errors.Log")));
    program.kill();
    program.waitForFinished();
}

TEST_F(ProgramTest, ASecondStartEndsSilently)
{
    QProcess first;
    Start(first);
    WaitUntilUp();

    QProcess second;
    Start(second);

    ASSERT_TRUE(second.waitForFinished(patience));
    EXPECT_EQ(second.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(second.readAllStandardOutput().toStdString(), "");
    EXPECT_FALSE(FileExists(home.PathOf(u"data/Tessarine/Tessarine/Errors.Log")));
    EXPECT_EQ(first.state(), QProcess::Running);
    first.kill();
    first.waitForFinished();
}

TEST_F(ProgramTest, AStartAfterADeadInstanceIsAFirstStart)
{
    QProcess dead;
    Start(dead);
    WaitUntilUp();
    dead.kill();
    dead.waitForFinished();

    QProcess program;
    Start(program);

    EXPECT_FALSE(program.waitForFinished(500));
    program.kill();
    program.waitForFinished();
}

TEST_F(ProgramTest, EndsSilentlyWithoutAPlaceForItsFolder)
{
    home.Write(u"data/Tessarine", "a file where the folder should be");
    QProcess program;

    Start(program);

    ASSERT_TRUE(program.waitForFinished(patience));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(ContentOf(home.PathOf(u"data/Tessarine")), "a file where the folder should be");
}

TEST_F(ProgramTest, ArgumentsHaveNoEffect)
{
    home.Write(u"job.tsq", "no project");  // to load it would leave a line in the error log
    QProcess program;

    Start(program, {"-platform", "nonsense", ToQt(home.PathOf(u"job.tsq")), "--help"});

    WaitUntilUp();
    EXPECT_FALSE(program.waitForFinished(100));
    EXPECT_FALSE(FileExists(home.PathOf(u"data/Tessarine/Tessarine/Errors.Log")));
    program.kill();
    program.waitForFinished();
}

}  // namespace
}  // namespace tessarine
