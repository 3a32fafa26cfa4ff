#include <gmock/gmock.h>

#include <algorithm>
#include <ostream>

#include "DeckOnDisk.h"
#include "engine/SearchFunctions.h"
#include "MemoryPresentation.h"
#include "model/Project.h"
#include "model/SearchLocations.h"
#include "office/builtin/objects/PresentationObject.h"
#include "support/ErrorLogRecorder.h"

namespace tessarine::test
{
namespace
{

using builtin::BuiltInProperty;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

const String catText = u"a cat";

MemoryShape ShapeWithCat(std::int32_t type)
{
    return {.type = type, .text = catText};
}

/// The word in every place that a job can search, and in some that it can't.
MemoryFile CatsEverywhere()
{
    using namespace powerpoint;
    const MemoryPage slide{.shapes = {ShapeWithCat(msoPlaceholder),
                                      ShapeWithCat(msoTextBox),
                                      ShapeWithCat(msoAutoShape),
                                      ShapeWithCat(msoTable),
                                      {.type = msoLinkedOLEObject, .linkSource = u"C:\\cat.xlsx"},
                                      {.type = msoPicture}},
                           .links = {u"https://cat.example"},
                           .header = catText,
                           .footer = catText};
    const MemoryPage master{.shapes = {ShapeWithCat(msoPlaceholder)}, .header = catText, .footer = catText};
    return {.slides = {{.page = slide, .notes = master, .design = 0}, {.page = slide, .design = 0}},
            .designs = {{.name = u"Plain", .slideMaster = master, .titleMaster = master},
                        {.name = u"Unused", .slideMaster = master}},
            .notesMaster = master,
            .handoutMaster = master,
            .builtIn = {{BuiltInProperty::Subject, catText}, {BuiltInProperty::ApplicationName, String(u"cat")}},
            .custom = {{u"Client", catText}, {u"Number", std::int64_t{7}}}};
}

/// A find or replace run with one location switched on.
struct LocationCase {
    Location location;
    std::int32_t count;
    std::vector<std::string> changed;  ///< The places that a replace run changes.
};

void PrintTo(const LocationCase& row, std::ostream* out)
{
    *out << SearchLocations[static_cast<std::size_t>(row.location)].name;
}

class SearchThroughAReader : public testing::TestWithParam<LocationCase>
{
protected:
    /// Replaces "cat" by "dog" and gives the count of the location.
    std::int32_t Run(bool isFindOnly)
    {
        const ErrorLogRecorder log;
        const ProjectOwner project;
        project->options->IsFindOnly = isFindOnly;
        const auto options = std::make_shared<OptionSetting>();
        (*options).*SearchLocations[static_cast<std::size_t>(GetParam().location)].isOn = true;
        project->FindAndReplaceList->Add(u"cat", u"dog", options, project.get());
        SearchFunctions engine;
        engine.mItems = project->FindAndReplaceList;
        engine.mIsFindOnly = isFindOnly;
        engine.IsRequiredCount = true;
        engine.xPresentation = builtin::MakePresentation(std::make_shared<MemoryPresentation>(file), u"memory");
        const auto results = engine.ProcessFile(u"memory", u"", nullptr);
        EXPECT_THAT(log.Lines(), IsEmpty());
        return results->Item(1)->Count(GetParam().location);
    }

    std::shared_ptr<MemoryFile> file = std::make_shared<MemoryFile>(CatsEverywhere());
};

TEST_P(SearchThroughAReader, FindsAndChangesNothing)
{
    EXPECT_EQ(Run(true), GetParam().count);

    EXPECT_EQ(TextsOf(*file), TextsOf(CatsEverywhere()));
}

TEST_P(SearchThroughAReader, ReplacesAndSavesThatPlaceAlone)
{
    std::vector<std::string> expected = TextsOf(CatsEverywhere());
    for (std::string& line : expected)
        if (std::ranges::count(GetParam().changed, line.substr(0, line.find(':'))) > 0)
            line.replace(line.find("cat", line.find(':')), 3, "dog");

    EXPECT_EQ(Run(false), GetParam().count);

    EXPECT_THAT(TextsOf(*file), ElementsAreArray(expected));
}

INSTANTIATE_TEST_SUITE_P(
    Locations, SearchThroughAReader,
    testing::Values(
        LocationCase{Location::Slides, 2, {"slide 1 shape 1", "slide 2 shape 1"}},
        LocationCase{Location::HyperlinkAddresses, 2, {"slide 1 link 1", "slide 2 link 1"}},
        LocationCase{Location::ShapesAndTextboxes,
                     4,
                     {"slide 1 shape 2", "slide 1 shape 3", "slide 2 shape 2", "slide 2 shape 3"}},
        LocationCase{Location::Header, 0, {}},
        LocationCase{Location::Footer, 0, {"slide 1 footer"}},  // the first one is rewritten, and not counted
        // The application's name is found and can't be changed; the three dates after it have no value and repeat its
        // count.
        LocationCase{Location::BuiltinProperies, 5, {"built-in 2"}},
        LocationCase{Location::CustomProperties, 1, {"custom Client"}},
        LocationCase{Location::Notes, 1, {"notes 1 shape 1"}},
        LocationCase{Location::Links, 2, {"slide 1 shape 5 source", "slide 2 shape 5 source"}},
        LocationCase{Location::SlideMasterPerSlide, 1, {"design 1 shape 1"}},
        LocationCase{Location::SlideMasterPerPresentation, 2, {"design 1 shape 1", "design 2 shape 1"}},
        LocationCase{Location::TitleMaster, 1, {"title master 1 shape 1"}},
        LocationCase{
            Location::HandoutMaster, 3, {"handout master shape 1", "notes master header", "notes master footer"}},
        LocationCase{Location::NotesMaster, 3, {"notes master shape 1", "notes master header", "notes master footer"}}),
    [](const testing::TestParamInfo<LocationCase>& test) {
        std::string name = SearchLocations[static_cast<std::size_t>(test.param.location)].name;
        std::erase(name, '-');
        return name;
    });

class ObjectsOverAReader : public testing::Test
{
protected:
    void Open(MemoryFile content)
    {
        file = std::make_shared<MemoryFile>(std::move(content));
        reader = std::make_shared<MemoryPresentation>(file);
        presentation = builtin::MakePresentation(reader, u"memory");
    }

    std::shared_ptr<powerpoint::DocumentProperty> BuiltIn(const char16_t* name)
    {
        return PropertyOf(*presentation->BuiltInDocumentProperties(), name);
    }

    std::shared_ptr<MemoryFile> file;
    std::shared_ptr<MemoryPresentation> reader;
    std::shared_ptr<powerpoint::Presentation> presentation;
};

TEST_F(ObjectsOverAReader, KeepEditsFromTheFileUntilItIsSaved)
{
    Open(CatsEverywhere());

    ReplaceInShape(*presentation, 1, 1, u"cat", u"dog");
    EXPECT_EQ(file->slides[0].page.shapes[0].text, u"a cat");
    presentation->Save();

    EXPECT_EQ(file->slides[0].page.shapes[0].text, u"a dog");
}

TEST_F(ObjectsOverAReader, HandOverNothingThatIsThereAlready)
{
    Open(CatsEverywhere());

    const auto slide = SlideOf(*presentation, 1);
    const auto link = HyperlinksOf(*presentation).front();
    const auto source = ShapeOf(*presentation, 1, 5)->LinkFormat();
    link->PutAddress(link->Address());
    source->PutSourceFullName(source->SourceFullName());
    slide->HeadersFooters()->Footer()->PutText(catText);
    BuiltIn(u"Subject")->PutValue(catText);
    PropertyOf(*presentation->CustomDocumentProperties(), u"Number")->PutValue(String(u"7"));

    EXPECT_EQ(reader->Edits(), 0);
}

TEST_F(ObjectsOverAReader, HandOverLineEndsAsParagraphBreaks)
{
    Open(CatsEverywhere());

    ReplaceInShape(*presentation, 1, 1, u"cat", u"dog\r\nand\nmouse\rtoo");
    SlideOf(*presentation, 1)->HeadersFooters()->Footer()->PutText(u"a\r\ndog");
    presentation->Save();

    EXPECT_EQ(file->slides[0].page.shapes[0].text, u"a dog\rand\rmouse\rtoo");
    EXPECT_EQ(file->slides[0].page.footer, u"a\rdog");
}

TEST_F(ObjectsOverAReader, SearchAllShapesWhenTheReaderGivesNoHint)
{
    Open(CatsEverywhere());

    EXPECT_TRUE(presentation->Slides()->MayHoldText(u"unicorn"));
    EXPECT_TRUE(presentation->NotesMayHoldText(u"unicorn"));
    EXPECT_TRUE(SlideOf(*presentation, 1)->Shapes()->MayHoldText(u"unicorn"));
}

TEST_F(ObjectsOverAReader, GiveAMissingMasterNoShapesAndEmptyTexts)
{
    Open({});

    for (const auto& master : {presentation->NotesMaster(), presentation->HandoutMaster()}) {
        const auto header = master->HeadersFooters()->Header();
        EXPECT_THAT(All(master->Shapes()), IsEmpty());
        EXPECT_FALSE(master->Shapes()->MayHoldText(u"cat"));
        EXPECT_EQ(header->Text(), u"");
        EXPECT_EQ(RaisedBy([&] { header->PutText(u""); }).number, 0);
        EXPECT_EQ(RaisedBy([&] { header->PutText(u"cat"); }).number, FailureNumber::InvalidRequest);
    }
}

TEST_F(ObjectsOverAReader, GiveASlideWithoutDesignOneWithoutNameAndShapes)
{
    Open({.slides = {{}}});

    const auto design = SlideOf(*presentation, 1)->Design();

    EXPECT_EQ(design->Name(), u"");
    EXPECT_THAT(All(design->SlideMaster()->Shapes()), IsEmpty());
    EXPECT_EQ(design->HasTitleMaster(), powerpoint::msoFalse);
    EXPECT_THAT(All(presentation->Designs()), IsEmpty());
}

TEST_F(ObjectsOverAReader, ShowNoHeaderOfASlideThoughTheFileHoldsOne)
{
    Open(CatsEverywhere());

    const auto header = SlideOf(*presentation, 1)->HeadersFooters()->Header();

    EXPECT_EQ(RaisedBy([&] { header->Text(); }).number, FailureNumber::InvalidRequest);
    EXPECT_EQ(RaisedBy([&] { header->PutText(catText); }).number, FailureNumber::InvalidRequest);
}

TEST_F(ObjectsOverAReader, GiveUnsetPropertiesTheirValues)
{
    Open({.slides = {{}, {}}});

    EXPECT_EQ(presentation->BuiltInDocumentProperties()->Count(), 34);
    EXPECT_EQ(powerpoint::TextOf(BuiltIn(u"Title")->Value()), u"");
    EXPECT_EQ(powerpoint::TextOf(BuiltIn(u"Number of words")->Value()), u"0");
    EXPECT_EQ(powerpoint::TextOf(BuiltIn(u"Number of slides")->Value()), u"2");
    EXPECT_EQ(RaisedBy([&] { BuiltIn(u"Last print date")->Value(); }).number, FailureNumber::Unspecified);
}

TEST_F(ObjectsOverAReader, RefuseCountsDatesAndLongTextsThemselves)
{
    Open({.builtIn = {{BuiltInProperty::NumberOfWords, std::int64_t{6}}}});

    EXPECT_EQ(RaisedBy([&] { BuiltIn(u"Number of words")->PutValue(String(u"7")); }).number,
              FailureNumber::Unspecified);
    EXPECT_EQ(RaisedBy([&] { BuiltIn(u"Title")->PutValue(String(256, u'x')); }).number, FailureNumber::BadArgument);
    EXPECT_EQ(reader->Edits(), 0);
}

}  // namespace
}  // namespace tessarine::test
