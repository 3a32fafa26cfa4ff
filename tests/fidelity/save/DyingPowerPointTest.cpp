#include <gmock/gmock.h>

#include "model/Project.h"
#include "office/builtin/Provider.h"
#include "platform/NativePath.h"
#include "support/Deck.h"
#include "support/ErrorLogRecorder.h"
#include "support/FailingPowerPoint.h"
#include "support/PackageReader.h"
#include "support/TemporaryFolder.h"

// A PowerPoint that dies at the second of three files of a replacement, at one place after the other: the file is as it
// was or saved whole, and the next one opens on a new PowerPoint.

namespace tessarine::test
{
namespace
{

using testing::ElementsAre;

struct Death {
    const char* call;
    int nth;
    bool isSavedBefore;
    std::int32_t number;  ///< Of the failure that ends the file.
    std::vector<std::string> log;
};

const std::string inEngine = " at Line No. 0 of Class Module SearchFunctions";
const std::string failed = "Error -2147023170 (The remote procedure call failed)";

class DyingPowerPoint : public testing::TestWithParam<Death>
{
protected:
    DyingPowerPoint()
    {
        const auto options = std::make_shared<OptionSetting>();
        options->InSlides = true;
        project_->FindAndReplaceList->Add(u"Fabrikam", u"Contoso", options, project_.get());
        for (const char16_t* name : {u"a.pptx", u"b.pptx", u"c.pptx"})
            project_->FilesToProcess.push_back(
                folder_.Write(name, Deck().Slide(Title(u"Fabrikam")).Slide(Title(u"Fabrikam")).Bytes()));
    }

    std::vector<std::string> TextsOfFile(StringView name) const
    {
        const auto package = PackageReader::FromFile(NativePath(folder_.PathOf(name)));
        std::vector<std::string> texts;
        for (const int slide : {1, 2})
            for (const String& text : TextsOf(package, slide))
                texts.push_back(ToUtf8(text));
        return texts;
    }

    const TemporaryFolder folder_;
    const ErrorLogRecorder log_;
    FailingPowerPoint office_{builtin::CreateProvider()};
    const ProjectOwner project_{office_.Provider()};
};

TEST_P(DyingPowerPoint, LeavesTheFileWholeAndTheRunStartsAnother)
{
    const std::string before = ContentOf(folder_.PathOf(u"b.pptx"));
    office_.DieAt(GetParam().call, GetParam().nth);
    std::vector<std::pair<String, std::int32_t>> passedOver;
    project_->FailurePassedOver = [&](const String& path, const Failure& failure) {
        passedOver.emplace_back(path, failure.number);
    };

    project_->Replacement();

    EXPECT_THAT(TextsOfFile(u"a.pptx"), ElementsAre("Contoso", "Contoso"));
    if (GetParam().isSavedBefore)
        EXPECT_THAT(TextsOfFile(u"b.pptx"), ElementsAre("Contoso", "Contoso"));
    else
        EXPECT_TRUE(ContentOf(folder_.PathOf(u"b.pptx")) == before);
    EXPECT_THAT(TextsOfFile(u"c.pptx"), ElementsAre("Contoso", "Contoso"));
    EXPECT_EQ(office_.script.Count("CreateApplication"), 2);
    EXPECT_EQ(office_.script.Count("Presentations.Open"), 3) << "each file once: the second is not tried again";
    EXPECT_EQ(office_.Running(), 0);
    EXPECT_TRUE(project_->options->IsFindOnly) << "the run has come to its end";
    EXPECT_THAT(passedOver, ElementsAre(std::pair(folder_.PathOf(u"b.pptx"), GetParam().number)));
    std::vector<testing::Matcher<std::string>> lines;
    for (const std::string& line : GetParam().log)
        lines.push_back(testing::EndsWith(line));
    EXPECT_THAT(log_.Lines(), testing::ElementsAreArray(lines));
}

INSTANTIATE_TEST_SUITE_P(Calls, DyingPowerPoint,
                         testing::Values(Death{"Shape.Type", 3, false, FailureNumber::RemoteCallFailed, {}},
                                         Death{"TextRange.Replace",
                                               5,
                                               false,
                                               FailureNumber::ServerGone,
                                               {failed + " in procedure SearchFunction" + inEngine,
                                                "slide 1, shape 1: its text could not be changed completely: The "
                                                "remote procedure call failed"}},
                                         Death{"Presentation.Save", 2, false, FailureNumber::RemoteCallFailed, {}},
                                         Death{"Presentation.Close", 2, true, FailureNumber::RemoteCallFailed, {}}),
                         [](const auto& parameter) {
                             std::string name = parameter.param.call;
                             std::erase(name, '.');
                             return name;
                         });

}  // namespace
}  // namespace tessarine::test
