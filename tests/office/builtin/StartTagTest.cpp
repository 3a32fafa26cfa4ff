#include "office/builtin/xml/StartTag.h"

#include <gtest/gtest.h>

namespace tessarine::builtin
{
namespace
{

std::string WithAttribute(std::string tag, std::string_view name, std::string_view value)
{
    PutAttribute(tag, name, value);
    return tag;
}

TEST(PutAttribute, ChangesTheValueAlone)
{
    EXPECT_EQ(WithAttribute("<a x:b = '1'  b=\"2\"/>", "b", "<&\">"), "<a x:b = '1'  b=\"&lt;&amp;&quot;&gt;\"/>");
    EXPECT_EQ(WithAttribute("<a x:b = '1'  b=\"2\"/>", "x:b", "3"), "<a x:b = '3'  b=\"2\"/>");
}

TEST(PutAttribute, AddsAndTakesAway)
{
    EXPECT_EQ(WithAttribute("<a:b c=\"1\">", "d", "2"), "<a:b d=\"2\" c=\"1\">");
    EXPECT_EQ(WithAttribute("<a:b/>", "d", "2"), "<a:b d=\"2\"/>");
    EXPECT_EQ(WithAttribute("<a:b d=\"2\" c=\"1\">", "d", ""), "<a:b c=\"1\">");
    EXPECT_EQ(WithAttribute("<a:b c=\"1\">", "d", ""), "<a:b c=\"1\">");
}

}  // namespace
}  // namespace tessarine::builtin
