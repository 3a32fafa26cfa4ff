#include "model/FindAndReplaceItems.h"

#include <gmock/gmock.h>

#include "model/Project.h"
#include "support/ErrorLogRecorder.h"

namespace tessarine
{

using testing::ElementsAre;
using testing::IsEmpty;

class ItemList : public testing::Test
{
protected:
    std::shared_ptr<FindAndReplaceItem> Add(const String& findWhat, const String& key = {})
    {
        return list_.Add(findWhat, u"with", std::make_shared<OptionSetting>(), {}, key);
    }

    std::vector<String> Texts() const
    {
        std::vector<String> texts;
        for (const auto& item : list_.NewEnum())
            texts.push_back(item->FindWhat);
        return texts;
    }

    const ErrorLogRecorder log_;
    FindAndReplaceItems list_;
};

TEST(Item, IsMadeEmptyWithItsOwnOptions)
{
    const FindAndReplaceItem item;

    ASSERT_NE(item.OptionSetting, nullptr);
    EXPECT_EQ(item.FindWhat, u"");
    EXPECT_EQ(item.ReplaceWith, u"");
    EXPECT_EQ(item.Project, nullptr);
    EXPECT_NE(item.OptionSetting, FindAndReplaceItem().OptionSetting);
}

TEST_F(ItemList, IsEmptyAtFirstAndReplacesOnImport)
{
    EXPECT_EQ(list_.Count(), 0);
    EXPECT_THAT(list_.NewEnum(), IsEmpty());
    EXPECT_FALSE(list_.KeepExistingItems);
}

TEST_F(ItemList, TakesPairsInPlaceOfAllAndSharesThem)
{
    const auto first = Add(u"first");
    const auto second = Add(u"second", u"key");
    const auto third = Add(u"third");

    list_.Assign({third, first});

    EXPECT_THAT(Texts(), ElementsAre(u"third", u"first"));
    EXPECT_EQ(list_.Item(2), first);
    list_.Assign({});
    EXPECT_EQ(list_.Count(), 0);
    EXPECT_EQ(second->FindWhat, u"second");
}

TEST_F(ItemList, AddsAnItemWithTheReferencesGiven)
{
    const auto options = std::make_shared<OptionSetting>();
    const ProjectOwner project;

    const auto item = list_.Add(u" find ", u"with\n", options, project.get());

    EXPECT_EQ(item->FindWhat, u" find ");
    EXPECT_EQ(item->ReplaceWith, u"with\n");
    EXPECT_EQ(item->OptionSetting, options);
    EXPECT_EQ(item->Project, project.get());
    EXPECT_EQ(list_.Item(1), item);
}

TEST_F(ItemList, AcceptsEmptyAndDuplicateTexts)
{
    Add(u"");
    Add(u"a");
    Add(u"a");

    EXPECT_THAT(Texts(), ElementsAre(u"", u"a", u"a"));
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ItemList, AddsWithoutOptionsWhenNoneAreGiven)
{
    EXPECT_EQ(list_.Add(u"a", u"b", {}, {})->OptionSetting, nullptr);
}

TEST_F(ItemList, SharesOptionsThatTwoItemsWereAddedWith)
{
    const auto options = std::make_shared<OptionSetting>();
    const auto first = list_.Add(u"a", u"", options, {});
    const auto second = list_.Add(u"b", u"", options, {});

    first->OptionSetting->MatchCase = true;

    EXPECT_TRUE(second->OptionSetting->MatchCase);
}

TEST_F(ItemList, LogsEachBadPositionAndGivesNull)
{
    Add(u"a");

    EXPECT_EQ(list_.Item(0), nullptr);
    EXPECT_EQ(list_.Item(2), nullptr);

    EXPECT_THAT(log_.Lines(),
                ElementsAre("Error 9 (Subscript out of range) in procedure Item at Line No. 0 of Class Module "
                            "FindAndReplaceItems",
                            "Error 9 (Subscript out of range) in procedure Item at Line No. 0 of Class Module "
                            "FindAndReplaceItems"));
    EXPECT_THAT(Texts(), ElementsAre(u"a"));
}

TEST_F(ItemList, FindsAnItemUnderItsKeyAndNothingUnderAnother)
{
    const auto item = Add(u"a", u"key");

    EXPECT_EQ(list_.Item(u"key"), item);
    EXPECT_EQ(list_.Item(u"other"), nullptr);
    EXPECT_THAT(log_.Lines(), ElementsAre("Error 5 (Invalid procedure call or argument) in procedure Item at Line No. "
                                          "0 of Class Module FindAndReplaceItems"));
}

TEST_F(ItemList, AddsNothingUnderAKeyInUse)
{
    Add(u"a", u"key");

    EXPECT_EQ(Add(u"b", u"key"), nullptr);

    EXPECT_THAT(Texts(), ElementsAre(u"a"));
    EXPECT_THAT(log_.Lines(), ElementsAre("Error 457 (This key is already associated with an element of this "
                                          "collection) in procedure Add at Line No. 0 of Class Module "
                                          "FindAndReplaceItems"));
}

TEST_F(ItemList, ClosesUpAfterARemovedItem)
{
    Add(u"a");
    Add(u"b");
    Add(u"c");

    list_.Remove(1);

    EXPECT_EQ(list_.Item(1)->FindWhat, u"b");
    EXPECT_EQ(list_.Count(), 2);
}

TEST_F(ItemList, StaysWhenABadPositionOrKeyIsRemoved)
{
    Add(u"a");

    list_.Remove(2);
    list_.Remove(u"key");

    EXPECT_THAT(Texts(), ElementsAre(u"a"));
    EXPECT_THAT(log_.Lines(),
                ElementsAre("Error 9 (Subscript out of range) in procedure Remove at Line No. 0 of Class Module "
                            "FindAndReplaceItems",
                            "Error 5 (Invalid procedure call or argument) in procedure Remove at Line No. 0 of Class "
                            "Module FindAndReplaceItems"));
}

}  // namespace tessarine
