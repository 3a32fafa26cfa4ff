#include "app/WindowTitle.h"

#include <gtest/gtest.h>

namespace tessarine
{

TEST(WindowTitle, EndsWithTheApplicationsTitle)
{
    EXPECT_EQ(BuildWindowTitle(u"untitled", false), u"untitled - Tessarine");
    EXPECT_EQ(BuildWindowTitle(u"About", false), u"About - Tessarine");
    EXPECT_EQ(BuildWindowTitle(u"", false), u" - Tessarine");
}

TEST(WindowTitle, TellsThatTheProjectIsModified)
{
    EXPECT_EQ(BuildWindowTitle(u"Contoso 😀.tsq", true), u"Contoso 😀.tsq (Modified) - Tessarine");
}

}  // namespace tessarine
