#include "ui/main/MainWindowTest.h"

#include <QCheckBox>
#include <QListWidget>

#include <numeric>

// The locations of a pair: the list with 14 check boxes below the grid.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

struct ListedLocation {
    const char* caption;
    bool OptionSetting::*field;
    const char* inGrid;
};

/// In the order of the list.
constexpr ListedLocation locations[] = {
    {"Slides", &OptionSetting::InSlides, "Slides"},
    {"Hyperlink Addresses", &OptionSetting::InHyperlinkAddresses, "Hyperlink Addresses"},
    {"Shapes and Texboxes", &OptionSetting::InShapesAndTextboxes, "Shape And Textboxes"},
    {"Header", &OptionSetting::InHeader, "Header,Header"},
    {"Footer", &OptionSetting::InFooter, "Footer"},
    {"Built In Properties", &OptionSetting::InBuiltinProperty, "Built In Properties"},
    {"Custom Properties", &OptionSetting::InCustomProperties, "Custom Properties"},
    {"Notes", &OptionSetting::InNotes, "Notes"},
    {"Links(OLE and DDE)", &OptionSetting::InLinks, "Links(OLE And DDE)"},
    {"Slide Master(Per Slide)", &OptionSetting::InSlideMasterPerSlide, "Slides Master(Per Slide)"},
    {"Slide Master(Per Presentation)", &OptionSetting::InSlideMasterPerPresentation, "Slides Master(Per Presentation)"},
    {"Title Master", &OptionSetting::InTitleMaster, "Title Master"},
    {"Handout Master", &OptionSetting::InHandoutMaster, "Handout Master"},
    {"Notes Master", &OptionSetting::InNotesMaster, "Notes Master"},
};
constexpr int locationCount = static_cast<int>(std::size(locations));

class LocationsTest : public MainWindowTest
{
protected:
    std::vector<int> LocationsOf(int row)
    {
        std::vector<int> on;
        for (int i = 0; i < locationCount; ++i)
            if ((*Items().Item(row)->OptionSetting).*locations[i].field)
                on.push_back(i);
        return on;
    }

    static std::vector<int> All()
    {
        std::vector<int> all(locationCount);
        std::iota(all.begin(), all.end(), 0);
        return all;
    }
};

class LocationTest : public LocationsTest, public testing::WithParamInterface<int>
{
protected:
    const ListedLocation& Param() { return locations[GetParam()]; }
};

TEST_P(LocationTest, TheEntryHasItsOwnText)
{
    EXPECT_EQ(The<QListWidget>("lstLookIn").count(), locationCount);
    EXPECT_EQ(The<QListWidget>("lstLookIn").item(GetParam())->text().toStdString(), Param().caption);
}

TEST_P(LocationTest, AClickTurnsItsFieldOnAndOffAndNoOther)
{
    EditPairs({{u"a", u"b", {}}});

    ClickLocation(GetParam());
    EXPECT_THAT(LocationsOf(1), ElementsAre(GetParam()));
    EXPECT_EQ(Cell(1, ItemColumn::Locations), Param().inGrid);
    EXPECT_TRUE(Window().IsModifed());

    Window().PutIsModifed(false);
    ClickLocation(GetParam());
    EXPECT_THAT(LocationsOf(1), IsEmpty());
    EXPECT_EQ(Cell(1, ItemColumn::Locations), "");
    EXPECT_TRUE(Window().IsModifed());
}

TEST_P(LocationTest, AClickNeverChangesAnotherEntry)
{
    EditPairs({{u"a", u"b", {}}});
    ClickBox("chkSelectAll");
    std::vector<int> others = All();
    others.erase(others.begin() + GetParam());

    ClickLocation(GetParam());

    EXPECT_EQ(CheckedLocations(), others);
    EXPECT_EQ(LocationsOf(1), others);
}

TEST_P(LocationTest, TheCheckMarkShowsTheFieldOfTheCurrentRow)
{
    EditPairs({{u"a", u"", {}}, {u"b", u"", {Param().field}}});
    EXPECT_THAT(CheckedLocations(), IsEmpty());

    ClickCell(2, ItemColumn::Number);
    EXPECT_THAT(CheckedLocations(), ElementsAre(GetParam()));

    ClickCell(1, ItemColumn::Number);
    EXPECT_THAT(CheckedLocations(), IsEmpty());
    EXPECT_THAT(LocationsOf(2), ElementsAre(GetParam()));
    EXPECT_FALSE(Window().IsModifed()) << "looking changes nothing";
}

TEST_P(LocationTest, AnAddedRowTakesItFromTheScreen)
{
    EditPairs({{u"a", u"b", {Param().field}}});

    Click("cmdAdd");

    EXPECT_THAT(LocationsOf(2), ElementsAre(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Locations, LocationTest, testing::Range(0, locationCount), [](const auto& parameter) {
    std::string name = locations[parameter.param].caption;
    std::erase_if(name, [](char letter) { return std::isalnum(static_cast<unsigned char>(letter)) == 0; });
    return name;
});

TEST_F(LocationsTest, TheSpaceKeyChecksTheEntryInTheList)
{
    EditPairs({{u"a", u"b", {}}});
    auto& list = The<QListWidget>("lstLookIn");
    list.setFocus();
    list.setCurrentRow(6);

    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Space);

    EXPECT_THAT(LocationsOf(1), ElementsAre(7));
}

TEST_F(LocationsTest, SeveralSelectedRowsTakeTheWholeSetOnTheScreen)
{
    EditPairs({{u"a", u"", {&OptionSetting::InNotes}},
               {u"b", u"", {&OptionSetting::InTitleMaster}},
               {u"c", u"", {&OptionSetting::InFooter}}});
    ClickCell(1, ItemColumn::Number);
    ClickCell(3, ItemColumn::Number, Qt::ControlModifier);
    ASSERT_THAT(CheckedLocations(), ElementsAre(4)) << "of the row clicked last";

    ClickLocation(0);

    EXPECT_THAT(LocationsOf(1), ElementsAre(0, 4));
    EXPECT_THAT(LocationsOf(2), ElementsAre(11));
    EXPECT_THAT(LocationsOf(3), ElementsAre(0, 4));
    EXPECT_EQ(Cell(1, ItemColumn::Locations), "Slides,Footer");
    EXPECT_EQ(Cell(2, ItemColumn::Locations), "Title Master");
}

TEST_F(LocationsTest, WithoutASelectedRowACheckMarkChangesNoPair)
{
    EditPairs({{u"a", u"b", {}}});
    Grid().clearSelection();

    ClickLocation(5);

    EXPECT_THAT(CheckedLocations(), ElementsAre(5));
    EXPECT_THAT(LocationsOf(1), IsEmpty());
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(LocationsTest, UncheckingTheLastLocationLeavesARowWithoutAny)
{
    EditPairs({{u"a", u"b"}});

    ClickLocation(0);

    EXPECT_THAT(LocationsOf(1), IsEmpty());
    EXPECT_THAT(CheckedLocations(), IsEmpty()) << "nothing is forced on an existing row";
    EXPECT_EQ(Cell(1, ItemColumn::Locations), "");
    EXPECT_THAT(messages.Messages(), IsEmpty());
}

TEST_F(LocationsTest, SelectAllChecksAndUnchecksEveryLocation)
{
    EditPairs({{u"a", u"", {}}, {u"b", u"", {&OptionSetting::InNotes}}});

    ClickBox("chkSelectAll");
    EXPECT_EQ(CheckedLocations(), All());
    EXPECT_EQ(LocationsOf(1), All());
    EXPECT_THAT(LocationsOf(2), ElementsAre(7));
    EXPECT_TRUE(Window().IsModifed());

    ClickBox("chkSelectAll");
    EXPECT_THAT(CheckedLocations(), IsEmpty());
    EXPECT_THAT(LocationsOf(1), IsEmpty());
}

TEST_F(LocationsTest, ARowWithEveryLocationNamesHeaderTwice)
{
    EditPairs({{u"a", u"", {}}});

    ClickBox("chkSelectAll");

    EXPECT_EQ(Cell(1, ItemColumn::Locations),
              "Slides,Hyperlink Addresses,Shape And Textboxes,Header,Footer,Header,Built In Properties,"
              "Custom Properties,Notes,Links(OLE And DDE),Slides Master(Per Slide),"
              "Slides Master(Per Presentation),Title Master,Handout Master,Notes Master");
}

TEST_F(LocationsTest, SelectAllWithoutASelectedRowChangesOnlyTheCheckMarks)
{
    EditPairs({{u"a", u"b", {&OptionSetting::InNotes}}});
    Grid().clearSelection();

    ClickBox("chkSelectAll");

    EXPECT_EQ(CheckedLocations(), All());
    EXPECT_THAT(LocationsOf(1), ElementsAre(7));
    EXPECT_EQ(Cell(1, ItemColumn::Locations), "Notes");
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(LocationsTest, WhenNothingIsCheckedSlidesIsForcedOnTheSelectedRows)
{
    EditPairs({{u"a", u"", {}}, {u"b", u"", {}}, {u"c", u"", {}}});
    ClickCell(1, ItemColumn::Number);
    ClickCell(2, ItemColumn::Number, Qt::ShiftModifier);

    Window().EnsureOneLocation();

    EXPECT_THAT(CheckedLocations(), ElementsAre(0));
    EXPECT_EQ(Cell(1, ItemColumn::Locations), "Slides");
    EXPECT_EQ(Cell(2, ItemColumn::Locations), "Slides");
    EXPECT_EQ(Cell(3, ItemColumn::Locations), "");
}

TEST_F(LocationsTest, WhenSomethingIsCheckedNothingIsForced)
{
    EditPairs({{u"a", u"", {&OptionSetting::InNotes}}});
    Items().Item(1)->OptionSetting->InFooter = true;  // the form does not know

    Window().EnsureOneLocation();

    EXPECT_THAT(CheckedLocations(), ElementsAre(7));
    EXPECT_THAT(LocationsOf(1), ElementsAre(4, 7));
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(LocationsTest, ShowingAPairWritesNothingBack)
{
    EditPairs({{u"a", u"", {&OptionSetting::InNotes}}});
    FindAndReplaceItem shown;
    shown.OptionSetting->InLinks = true;
    shown.OptionSetting->MatchCase = true;

    Window().FillItemOnForm(shown);

    EXPECT_THAT(CheckedLocations(), ElementsAre(8));
    EXPECT_TRUE(IsChecked("chkMatchCase"));
    EXPECT_THAT(LocationsOf(1), ElementsAre(7));
    EXPECT_FALSE(Items().Item(1)->OptionSetting->MatchCase);
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(LocationsTest, ThePairOfTheFormHasItsMarksAndNoTexts)
{
    EditPairs({{u"a", u"b", {&OptionSetting::InNotes, &OptionSetting::InLinks}}});
    ClickBox("chkPromptOnReplace");

    const auto item = Window().GetItemFromForm();

    EXPECT_EQ(item->FindWhat, u"");
    EXPECT_EQ(item->ReplaceWith, u"");
    EXPECT_TRUE(item->OptionSetting->InNotes);
    EXPECT_TRUE(item->OptionSetting->InLinks);
    EXPECT_FALSE(item->OptionSetting->InSlides);
    EXPECT_TRUE(item->OptionSetting->PromptOnReplace);
    EXPECT_FALSE(item->OptionSetting->MatchCase);
    EXPECT_NE(item->OptionSetting, Items().Item(1)->OptionSetting);
}

}  // namespace
}  // namespace tessarine
