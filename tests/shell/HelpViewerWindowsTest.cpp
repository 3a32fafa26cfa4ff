#include "shell/HelpViewer.h"

#include <gmock/gmock.h>

#include "platform/ProgramFolder.h"
#include "shell/Help.h"
#include "support/ErrorLogRecorder.h"
#include "support/qt/ShellRecorder.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class HelpViewerTest : public testing::Test
{
protected:
    HelpViewerTest() { previousFolder_ = SetProgramFolder(folder_.Path()); }
    ~HelpViewerTest() override { SetProgramFolder(previousFolder_); }

    const ErrorLogRecorder log_;
    const TemporaryFolder folder_;
    String previousFolder_;
};

TEST_F(HelpViewerTest, ShowsTheFileBesideTheProgram)
{
    const ShellRecorder shell;

    ShowHelp();

    EXPECT_THAT(shell.Opened(), ElementsAre(folder_.PathOf(u"Help.chm")));
}

TEST_F(HelpViewerTest, ShowsNothingWithoutTheFile)
{
    ShowHelp();

    EXPECT_THAT(log_.Lines(), IsEmpty());
}

}  // namespace
}  // namespace tessarine
