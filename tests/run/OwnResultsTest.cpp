#include "run/OwnResults.h"

#include <gtest/gtest.h>

#include "engine/CounterStatuses.h"

namespace tessarine
{
namespace
{

TEST(OwnResults, AreThoseThatAreThereAndNew)
{
    const auto first = std::make_shared<CounterStatuses>();
    const auto second = std::make_shared<CounterStatuses>();
    OwnResults results;

    EXPECT_FALSE(results.Take(nullptr));
    EXPECT_TRUE(results.Take(first));
    EXPECT_FALSE(results.Take(first));
    EXPECT_FALSE(results.Take(first));
    EXPECT_TRUE(results.Take(second));
}

TEST(OwnResults, RememberTheResultBeforeAFileWithoutOne)
{
    const auto first = std::make_shared<CounterStatuses>();
    OwnResults results;
    results.Take(first);

    EXPECT_FALSE(results.Take(nullptr));
    EXPECT_FALSE(results.Take(first));
}

TEST(OwnResults, KeepAResultAliveSoThatItsAddressStaysTaken)
{
    OwnResults results;
    auto result = std::make_shared<CounterStatuses>();
    const std::weak_ptr<CounterStatuses> watched = result;

    results.Take(result);
    result.reset();
    EXPECT_FALSE(watched.expired());

    results.Take(std::make_shared<CounterStatuses>());
    EXPECT_TRUE(watched.expired());
}

}  // namespace
}  // namespace tessarine
