#include "model/CustomProperties.h"

#include <gmock/gmock.h>

#include "support/ErrorLogRecorder.h"

namespace tessarine
{

using testing::ElementsAre;
using testing::IsEmpty;

class NamedStrings : public testing::Test
{
protected:
    const ErrorLogRecorder log_;
    CustomProperties properties_;
};

TEST_F(NamedStrings, KeepTheirOrderAndTakeDuplicates)
{
    properties_.Add(u"FindAndReplaceFilePath", u"");
    properties_.Add(u"LANG", u"English.lng");
    const auto again = properties_.Add(u"LANG", u"");

    EXPECT_EQ(properties_.Count(), 3);
    EXPECT_EQ(properties_.Item(2)->ProperyName, u"LANG");
    EXPECT_EQ(properties_.Item(2)->PropertyValue, u"English.lng");
    EXPECT_EQ(properties_.Item(3), again);
    EXPECT_EQ(properties_.NewEnum().size(), 3u);
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(NamedStrings, ChangeThroughTheReferenceHandedOut)
{
    properties_.Add(u"FindAndReplaceListSource", u"INTERNAL");

    properties_.Item(1)->PropertyValue = u"EXTERNAL";

    EXPECT_EQ(properties_.Item(1)->PropertyValue, u"EXTERNAL");
}

TEST_F(NamedStrings, AreEmptiedByRemovingTheFirstUntilNoneIsLeft)
{
    for (int i = 0; i < 3; ++i)
        properties_.Add(u"name", u"value");

    while (properties_.Count() > 0)
        properties_.Remove(1);

    EXPECT_THAT(properties_.NewEnum(), IsEmpty());
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(NamedStrings, LogABadPositionOrKeyAndGiveNull)
{
    EXPECT_EQ(properties_.Item(1), nullptr);
    EXPECT_EQ(properties_.Item(u"LANG"), nullptr);
    properties_.Remove(1);

    EXPECT_THAT(log_.Lines(),
                ElementsAre("Error 9 (Subscript out of range) in procedure Item at Line No. 0 of Class Module "
                            "CustomProperties",
                            "Error 5 (Invalid procedure call or argument) in procedure Item at Line No. 0 of Class "
                            "Module CustomProperties",
                            "Error 9 (Subscript out of range) in procedure Remove at Line No. 0 of Class Module "
                            "CustomProperties"));
}

TEST_F(NamedStrings, AddNothingUnderAKeyInUse)
{
    properties_.Add(u"name", u"value", u"key");

    EXPECT_EQ(properties_.Add(u"other", u"value", u"key"), nullptr);

    EXPECT_EQ(properties_.Count(), 1);
    EXPECT_EQ(properties_.Item(u"key")->ProperyName, u"name");
    EXPECT_EQ(log_.Lines().size(), 1u);
}

}  // namespace tessarine
