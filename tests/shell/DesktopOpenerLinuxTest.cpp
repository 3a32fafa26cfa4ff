#include "shell/DesktopOpener.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTest>

#include "i18n/QtText.h"
#include "shell/OpenDoc.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

/// An xdg-open of the test's own, the only program there is.
class DesktopOpenerTest : public testing::Test
{
protected:
    DesktopOpenerTest() { qputenv("PATH", ToUtf8(folder_.Path()).c_str()); }
    ~DesktopOpenerTest() override
    {
        qputenv("PATH", path_);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// Opens with the patience of a test: an opener that ends is waited for, however slow the machine is.
    static std::int32_t Open(const String& target) { return OpenWithDesktop(target, patience); }

    void Opener(const std::string& lines) const
    {
        const String script = folder_.Write(u"xdg-open", "#!/bin/sh\n" + lines + "\n");
        SetMode(script, 0755);
    }

    static constexpr std::chrono::seconds patience{30};
    TemporaryFolder folder_;
    QByteArray path_ = qgetenv("PATH");
};

TEST_F(DesktopOpenerTest, HandsTheTargetOverAsOneArgument)
{
    Opener("printf '%s|' \"$@\" >" + ToUtf8(folder_.PathOf(u"arguments")));

    EXPECT_EQ(Open(u"/a folder/ü $HOME.txt"), ShellResult::Opened);

    EXPECT_EQ(ContentOf(folder_.PathOf(u"arguments")), "/a folder/ü $HOME.txt|");
}

TEST_F(DesktopOpenerTest, TellsAMissingFile)
{
    Opener("exit 2");

    EXPECT_EQ(Open(u"/gone"), ShellResult::FileNotFound);
}

TEST_F(DesktopOpenerTest, TellsThatNoProgramOpensTheType)
{
    Opener("exit 3");
    EXPECT_EQ(Open(u"/a"), ShellResult::NoAssociation);

    Opener("exit 4");
    EXPECT_EQ(Open(u"/a"), ShellResult::NoAssociation);

    Opener("kill -9 $$");
    EXPECT_EQ(Open(u"/a"), ShellResult::NoAssociation);
}

TEST_F(DesktopOpenerTest, TellsThatThereIsNoOpener)
{
    EXPECT_EQ(Open(u"/a"), ShellResult::NoAssociation);
}

TEST_F(DesktopOpenerTest, LeavesAViewerThatStaysToItself)
{
    const std::string stop = ToUtf8(folder_.PathOf(u"stop"));
    const String ended = folder_.PathOf(u"ended");
    Opener("while [ ! -e '" + stop + "' ]; do /bin/sleep 0.02; done; echo ended >'" + ToUtf8(ended) + "'");

    EXPECT_EQ(OpenWithDesktop(u"/a", std::chrono::milliseconds(50)), ShellResult::Opened);
    EXPECT_EQ(ContentOf(ended), "<missing>");

    folder_.Write(u"stop");
    EXPECT_TRUE(QTest::qWaitFor([&] { return ContentOf(ended) == "ended\n"; }, 30'000));
}

}  // namespace
}  // namespace tessarine
