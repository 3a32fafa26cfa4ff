#include "desktop/FirstExcel.h"

#include <gtest/gtest.h>

#include "platform/Failure.h"

namespace tessarine
{
namespace
{

/// Counts what is asked of it, and creates nothing or fails.
class CountingExcel final : public excel::Provider
{
public:
    std::shared_ptr<excel::Application> CreateApplication() override
    {
        ++created;
        if (failure != 0)
            throw Failure(failure, u"scripted");
        return nullptr;
    }

    int created = 0;
    std::int32_t failure = 0;
};

class FirstExcelTest : public testing::Test
{
protected:
    void Create() { FirstExcel(excel_, otherwise_)->CreateApplication(); }

    const std::shared_ptr<CountingExcel> excel_ = std::make_shared<CountingExcel>();
    const std::shared_ptr<CountingExcel> otherwise_ = std::make_shared<CountingExcel>();
};

TEST_F(FirstExcelTest, IsExcelWhereThatIsThere)
{
    Create();

    EXPECT_EQ(excel_->created, 1);
    EXPECT_EQ(otherwise_->created, 0);
}

TEST_F(FirstExcelTest, IsTheSubstituteWhereExcelCannotBeCreated)
{
    excel_->failure = FailureNumber::CannotCreateObject;

    Create();

    EXPECT_EQ(otherwise_->created, 1);
}

TEST_F(FirstExcelTest, TellsAnyOtherFailureOfExcel)
{
    excel_->failure = FailureNumber::ServerGone;

    EXPECT_THROW(Create(), Failure);
    EXPECT_EQ(otherwise_->created, 0);
}

}  // namespace
}  // namespace tessarine
