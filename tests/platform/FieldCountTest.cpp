#include "platform/FieldCount.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>

namespace tessarine
{

TEST(FieldCount, CountsFieldsOfAnyType)
{
    struct None {
    };
    struct One {
        bool a = true;
    };
    struct Several {
        std::u16string a;
        std::int32_t b;
        bool c = false;
        std::shared_ptr<int> d;
    };

    EXPECT_EQ(FieldCount<None>(), 0u);
    EXPECT_EQ(FieldCount<One>(), 1u);
    EXPECT_EQ(FieldCount<Several>(), 4u);
}

}  // namespace tessarine
