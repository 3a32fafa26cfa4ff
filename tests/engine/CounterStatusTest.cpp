#include "engine/CounterStatus.h"

#include "engine/CounterStatuses.h"
#include "EngineTest.h"

namespace tessarine
{

namespace
{

struct CountCase : Named {
    std::size_t row;
    bool OptionSetting::*isOn;
    std::int32_t (CounterStatus::*get)() const;
    void (CounterStatus::*put)(std::int32_t);
};

class EachCount : public ::testing::TestWithParam<CountCase>
{
};

TEST_P(EachCount, HoldsWhatIsWritten)
{
    CounterStatus status;

    (status.*GetParam().put)(-1);

    EXPECT_EQ((status.*GetParam().get)(), -1);
    EXPECT_EQ(status.FileStausAfterProcess, 0);
}

TEST_P(EachCount, RaisesTheStatusAboveZero)
{
    CounterStatus status;
    status.FileStausAfterProcess = 2;

    (status.*GetParam().put)(1);

    EXPECT_EQ(status.FileStausAfterProcess, 1);
}

TEST_P(EachCount, LeavesTheStatusAtZeroAndBelow)
{
    CounterStatus status;
    status.FileStausAfterProcess = 2;

    (status.*GetParam().put)(0);
    (status.*GetParam().put)(-1);

    EXPECT_EQ(status.FileStausAfterProcess, 2);
}

TEST_P(EachCount, StandsInTheRowOfItsLocation)
{
    CounterStatus status;

    (status.*GetParam().put)(7);

    CounterStatus::LocationCounts expected{};
    expected[GetParam().row] = 7;
    EXPECT_EQ(status.Counts(), expected);
    EXPECT_EQ(SearchLocations[GetParam().row].isOn, GetParam().isOn);
}

INSTANTIATE_TEST_SUITE_P(
    AllLocations, EachCount,
    ::testing::Values(
        CountCase{{"Slides"},
                  0,
                  &OptionSetting::InSlides,
                  &CounterStatus::Slides_Replaced,
                  &CounterStatus::PutSlides_Replaced},
        CountCase{{"HyperlinkAddresses"},
                  1,
                  &OptionSetting::InHyperlinkAddresses,
                  &CounterStatus::HyperlinkAddresses_Replaced,
                  &CounterStatus::PutHyperlinkAddresses_Replaced},
        CountCase{{"ShapesAndTextboxes"},
                  2,
                  &OptionSetting::InShapesAndTextboxes,
                  &CounterStatus::ShapesAndTextboxes_Replaced,
                  &CounterStatus::PutShapesAndTextboxes_Replaced},
        CountCase{{"Header"},
                  3,
                  &OptionSetting::InHeader,
                  &CounterStatus::Header_Replaced,
                  &CounterStatus::PutHeader_Replaced},
        CountCase{{"Footer"},
                  4,
                  &OptionSetting::InFooter,
                  &CounterStatus::Footer_Replaced,
                  &CounterStatus::PutFooter_Replaced},
        CountCase{{"BuiltinProperies"},
                  5,
                  &OptionSetting::InBuiltinProperty,
                  &CounterStatus::BuiltinProperies_Replaced,
                  &CounterStatus::PutBuiltinProperies_Replaced},
        CountCase{{"CustomProperties"},
                  6,
                  &OptionSetting::InCustomProperties,
                  &CounterStatus::CustomProperties_Replaced,
                  &CounterStatus::PutCustomProperties_Replaced},
        CountCase{
            {"Notes"}, 7, &OptionSetting::InNotes, &CounterStatus::Notes_Replaced, &CounterStatus::PutNotes_Replaced},
        CountCase{
            {"Links"}, 8, &OptionSetting::InLinks, &CounterStatus::Links_Replaced, &CounterStatus::PutLinks_Replaced},
        CountCase{{"SlideMasterPerSlide"},
                  9,
                  &OptionSetting::InSlideMasterPerSlide,
                  &CounterStatus::SlideMasterPerSlide_Replaced,
                  &CounterStatus::PutSlideMasterPerSlide_Replaced},
        CountCase{{"SlideMasterPerPresentation"},
                  10,
                  &OptionSetting::InSlideMasterPerPresentation,
                  &CounterStatus::SlideMasterPerPresentation_Replaced,
                  &CounterStatus::PutSlideMasterPerPresentation_Replaced},
        CountCase{{"TitleMaster"},
                  11,
                  &OptionSetting::InTitleMaster,
                  &CounterStatus::TitleMaster_Replaced,
                  &CounterStatus::PutTitleMaster_Replaced},
        CountCase{{"HandoutMaster"},
                  12,
                  &OptionSetting::InHandoutMaster,
                  &CounterStatus::HandoutMaster_Replaced,
                  &CounterStatus::PutHandoutMaster_Replaced},
        CountCase{{"NotesMaster"},
                  13,
                  &OptionSetting::InNotesMaster,
                  &CounterStatus::NotesMaster_Replaced,
                  &CounterStatus::PutNotesMaster_Replaced}),
    NameOf<CountCase>);

TEST(CounterStatus, KeepsItsStatusWhenALaterCountIsZero)
{
    CounterStatus status;
    status.PutSlides_Replaced(3);

    status.PutSlides_Replaced(0);
    status.PutNotes_Replaced(0);

    EXPECT_EQ(status.FileStausAfterProcess, 1);
}

class CounterStatusesTest : public EngineTest
{
protected:
    static std::shared_ptr<CounterStatus> AddCounts(CounterStatuses& statuses, std::int32_t slides, std::int32_t status,
                                                    const String& key = {})
    {
        return statuses.Add(slides, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, status, u"a", u"b", key);
    }
};

TEST_F(CounterStatusesTest, StartsEmptyAndNotProcessed)
{
    const CounterStatuses statuses;

    EXPECT_EQ(statuses.Count(), 0);
    EXPECT_EQ(statuses.FileStausAfterProcess, 0);
    EXPECT_TRUE(statuses.mError.empty());
    EXPECT_TRUE(statuses.FileName.empty());
    EXPECT_TRUE(statuses.NewEnum().empty());
}

TEST_F(CounterStatusesTest, AddTakesTheCountsInTheOrderOfTheRows)
{
    CounterStatuses statuses;

    const auto added = statuses.Add(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 2, u"find", u"with", u"");

    EXPECT_THAT(added->Counts(), ::testing::ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13));
    EXPECT_EQ(added->FindWhat, u"find");
    EXPECT_EQ(added->ReplaceWith, u"with");
}

TEST_F(CounterStatusesTest, AddLetsTheStatusArgumentOverrideWhatACountRaised)
{
    CounterStatuses statuses;

    EXPECT_EQ(AddCounts(statuses, 5, 2)->FileStausAfterProcess, 2);
}

TEST_F(CounterStatusesTest, AddOfCountsBelowZeroDoesNotRaiseTheStatus)
{
    CounterStatuses statuses;

    EXPECT_EQ(AddCounts(statuses, -1, 0)->FileStausAfterProcess, 0);
}

TEST_F(CounterStatusesTest, ItemTakesAPositionOrAKey)
{
    CounterStatuses statuses;
    const auto first = AddCounts(statuses, 0, 2);
    const auto second = AddCounts(statuses, 0, 2, u"key");

    EXPECT_EQ(statuses.Item(1), first);
    EXPECT_EQ(statuses.Item(u"key"), second);
    EXPECT_THAT(statuses.NewEnum(), ::testing::ElementsAre(first, second));
}

TEST_F(CounterStatusesTest, RemoveClosesUp)
{
    CounterStatuses statuses;
    AddCounts(statuses, 0, 2);
    const auto second = AddCounts(statuses, 0, 2);

    statuses.Remove(1);

    EXPECT_EQ(statuses.Count(), 1);
    EXPECT_EQ(statuses.Item(1), second);
}

TEST_F(CounterStatusesTest, BadPositionsAndKeysAreLoggedAndGiveNull)
{
    CounterStatuses statuses;
    AddCounts(statuses, 0, 2, u"key");

    EXPECT_EQ(statuses.Item(2), nullptr);
    EXPECT_EQ(AddCounts(statuses, 0, 2, u"key"), nullptr);
    statuses.Remove(u"other");

    EXPECT_EQ(statuses.Count(), 1);
    EXPECT_THAT(
        Log(),
        ::testing::ElementsAre(
            "Error 9 (Subscript out of range) in procedure Item at Line No. 0 of Class Module CounterStatuses",
            "Error 457 (This key is already associated with an element of this collection) in procedure Add at Line "
            "No. 0 of Class Module CounterStatuses",
            "Error 5 (Invalid procedure call or argument) in procedure Remove at Line No. 0 of Class Module "
            "CounterStatuses"));
}

}  // namespace

}  // namespace tessarine
