#include "settings/EngineSetting.h"

#include <gtest/gtest.h>

#include "support/qt/UserFolders.h"

namespace tessarine
{

TEST(EngineSetting, IsRememberedOnceTheUserHasAgreed)
{
    const UserFolders user;

    EXPECT_FALSE(IsBuiltInEngineAgreed());
    RememberBuiltInEngine();

    EXPECT_TRUE(IsBuiltInEngineAgreed());
}

}  // namespace tessarine
