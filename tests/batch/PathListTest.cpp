#include "batch/PathList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/Failure.h"

namespace tessarine::batch
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

TEST(PathList, TakesOnePathALineWithEitherLineEnd)
{
    EXPECT_THAT(PathsOfList("a.pptx\nb.pptx\r\nc.pptx"), ElementsAre(u"a.pptx", u"b.pptx", u"c.pptx"));
}

TEST(PathList, LeavesOutEmptyLinesAndTheByteOrderMark)
{
    EXPECT_THAT(PathsOfList("\xEF\xBB\xBF"
                            "a.pptx\n\n\r\nb.pptx\n"),
                ElementsAre(u"a.pptx", u"b.pptx"));
    EXPECT_THAT(PathsOfList(""), IsEmpty());
}

TEST(PathList, KeepsBlanksAndBytes)
{
    const auto paths = PathsOfList(" a b .pptx\ncaf\xE9.pptx\n");

    EXPECT_EQ(paths[0], u" a b .pptx");
    EXPECT_EQ(ToUtf8(paths[1]), "caf\xE9.pptx");
}

TEST(PathList, MayEndPathsByNulAndThenKeepsAllOtherBytes)
{
    using namespace std::string_literals;

    EXPECT_THAT(PathsOfList("\xEF\xBB\xBF\na.pptx\0\0b\r\0c.pptx"s, PathEnd::Null),
                ElementsAre(u"\uFEFF\na.pptx", u"b\r", u"c.pptx"));
}

TEST(PathList, RaisesWhenTheListIsMissing)
{
    EXPECT_THROW(ReadPathList(u"/nowhere/list.txt"), Failure);
}

}  // namespace
}  // namespace tessarine::batch
