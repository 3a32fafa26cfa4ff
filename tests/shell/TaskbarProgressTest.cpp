#include "shell/TaskbarProgress.h"

#include <vector>

#include <gmock/gmock.h>

#include "platform/Failure.h"

namespace tessarine
{
namespace
{

TEST(TaskbarProgress, TellsThePortTheShareAndThenNone)
{
    std::vector<std::optional<double>> told;
    SetTaskbarProgress([&told](std::optional<double> share) { told.push_back(share); });

    ShowTaskbarProgress(0.5);
    HideTaskbarProgress();

    SetTaskbarProgress({});
    EXPECT_THAT(told, testing::ElementsAre(0.5, std::nullopt));
}

TEST(TaskbarProgress, NeverRaisesWithoutAPortOrWithOneThatFails)
{
    EXPECT_NO_THROW(ShowTaskbarProgress(0.5));

    SetTaskbarProgress([](std::optional<double>) { throw Failure(7, u"Out of memory"); });
    EXPECT_NO_THROW(ShowTaskbarProgress(0.5));
    EXPECT_NO_THROW(HideTaskbarProgress());
    SetTaskbarProgress({});
}

}  // namespace
}  // namespace tessarine
