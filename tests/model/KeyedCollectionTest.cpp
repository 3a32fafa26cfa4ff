#include "model/KeyedCollection.h"

#include <gmock/gmock.h>

#include "log/Treatments.h"

namespace tessarine
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

std::vector<int> ValuesOf(const KeyedCollection<int>& collection)
{
    std::vector<int> values;
    for (const auto& element : collection.NewEnum())
        values.push_back(*element);
    return values;
}

}  // namespace

class Collection : public testing::Test
{
protected:
    Collection()
    {
        collection_.Add(std::make_shared<int>(10));
        collection_.Add(std::make_shared<int>(20), u"twenty");
        collection_.Add(std::make_shared<int>(30));
    }

    KeyedCollection<int> collection_;
};

TEST_F(Collection, CountsPositionsFromOneInTheOrderOfInsertion)
{
    EXPECT_EQ(*collection_.Item(1), 10);
    EXPECT_EQ(*collection_.Item(3), 30);
    EXPECT_EQ(collection_.Count(), 3);
    EXPECT_THAT(ValuesOf(collection_), ElementsAre(10, 20, 30));
}

TEST_F(Collection, GivesAnElementUnderItsKey)
{
    EXPECT_EQ(*collection_.Item(u"twenty"), 20);
}

TEST_F(Collection, ClosesUpAfterARemovedElement)
{
    collection_.Remove(1);
    collection_.Remove(u"twenty");

    EXPECT_EQ(*collection_.Item(1), 30);
    EXPECT_EQ(collection_.Count(), 1);
}

TEST_F(Collection, RaisesForAPositionOutsideOfIt)
{
    for (const std::int32_t position : {0, -1, 4}) {
        EXPECT_EQ(Skip([&] { collection_.Item(position); }), 9);
        EXPECT_EQ(Skip([&] { collection_.Remove(position); }), 9);
    }
    EXPECT_EQ(collection_.Count(), 3);
}

TEST_F(Collection, RaisesForAnUnknownOrEmptyKey)
{
    EXPECT_EQ(Skip([&] { collection_.Item(u"thirty"); }), 5);
    EXPECT_EQ(Skip([&] { collection_.Item(u""); }), 5);
    EXPECT_EQ(Skip([&] { collection_.Remove(u"thirty"); }), 5);
}

TEST_F(Collection, TakesAKeyOnlyOnce)
{
    EXPECT_EQ(Skip([&] { collection_.Add(std::make_shared<int>(40), u"twenty"); }), 457);
    EXPECT_THAT(ValuesOf(collection_), ElementsAre(10, 20, 30));
}

TEST_F(Collection, CanBeEmptiedWhileItIsWalked)
{
    for (const auto& element : collection_.NewEnum()) {
        EXPECT_NE(element, nullptr);
        collection_.Remove(1);
    }

    EXPECT_THAT(ValuesOf(collection_), IsEmpty());
}

}  // namespace tessarine
