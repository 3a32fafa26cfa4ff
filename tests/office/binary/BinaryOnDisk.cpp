#include "BinaryOnDisk.h"

#include "engine/SearchFunctions.h"
#include "files/CompoundFile.h"
#include "support/ErrorLogRecorder.h"

namespace tessarine::test
{

namespace
{

class Lister
{
public:
    void Shapes(const std::string& place, powerpoint::Shapes& shapes)
    {
        int number = 0;
        const auto walk = shapes.NewEnum();
        while (const auto shape = walk->Next()) {
            const std::string of = place + " shape " + std::to_string(++number);
            if (shape->HasTextFrame() != powerpoint::msoFalse)
                Add(of + " (" + std::to_string(shape->Type()) + ")",
                    shape->TextFrame()->TextRange()->TextAt(1, 1'000'000).value());
            else
                Add(of + " (" + std::to_string(shape->Type()) + ")", u"-");
            if (shape->Type() == powerpoint::msoLinkedOLEObject)
                Add(of + " source", shape->LinkFormat()->SourceFullName());
        }
    }
    void Text(const std::string& place, powerpoint::HeaderFooter& text)
    {
        const Raised raised = RaisedBy([&] { Add(place, text.Text()); });
        if (raised.number != 0)
            lines_.push_back(place + ": " + std::to_string(raised.number));
    }
    void Add(const std::string& place, const String& text) { lines_.push_back(place + ": " + ToUtf8(text)); }
    std::vector<std::string> Take() { return std::move(lines_); }

private:
    std::vector<std::string> lines_;
};

}  // namespace

std::int32_t BinaryOnDisk::Run(const std::vector<Location>& locations, const String& find, const String& with,
                               bool isFindOnly) const
{
    const BinaryOutcome outcome = Process({{find, with, locations}}, {.isFindOnly = isFindOnly});
    EXPECT_EQ(outcome.failure.number, 0) << outcome.failure.text;
    // Warnings may be; what was wrong is a failure of the engine.
    EXPECT_THAT(outcome.log, testing::Not(testing::Contains(testing::HasSubstr("Error "))));
    return outcome.results ? outcome.Count(locations.front()) : -1;
}

BinaryOutcome BinaryOnDisk::Process(const std::vector<BinaryPair>& pairs, const BinaryJob& job) const
{
    const ErrorLogRecorder log;
    const ProjectOwner project;
    project->options->IsFindOnly = job.isFindOnly;
    for (const BinaryPair& pair : pairs) {
        const auto options = std::make_shared<OptionSetting>();
        for (const Location location : pair.locations)
            (*options).*RowOf(location).isOn = true;
        options->MatchCase = pair.matchesCase;
        options->MatchWholeWord = pair.matchesWholeWords;
        const auto item = project->FindAndReplaceList->Add(pair.find, pair.with, options, project.get());
        if (!pair.belongsToProject)
            item->Project.reset();
    }
    SearchFunctions engine;
    engine.mItems = project->FindAndReplaceList;
    engine.mIsFindOnly = job.isFindOnly;
    engine.IsRequiredCount = job.countsAll;
    BinaryOutcome outcome;
    outcome.failure = RaisedBy([&] {
        engine.xPresentation = Open();
        if (job.revision)
            engine.UpdateISO9001Version(*job.revision, job.increment);
        outcome.results = engine.ProcessFile(Path(), u"", nullptr);
    });
    outcome.log = log.Lines();
    return outcome;
}

std::vector<std::string> BinaryOnDisk::Texts() const
{
    Lister lister;
    const auto presentation = Open();
    int number = 0;
    for (const auto& slide : All(presentation->Slides())) {
        const std::string place = "slide " + std::to_string(++number);
        lister.Shapes(place, *slide->Shapes());
        lister.Shapes("notes " + std::to_string(number), *slide->NotesPage()->Shapes());
        lister.Text(place + " footer", *slide->HeadersFooters()->Footer());
        for (const auto& link : All(slide->Hyperlinks()))
            lister.Add(place + " link", link->Address());
        lister.Add(place + " design", slide->Design()->Name());
    }
    for (const auto& design : All(presentation->Designs())) {
        const std::string name = ToUtf8(design->Name());
        lister.Shapes("master \"" + name + "\"", *design->SlideMaster()->Shapes());
        if (design->HasTitleMaster() != powerpoint::msoFalse)
            lister.Shapes("title master \"" + name + "\"", *design->TitleMaster()->Shapes());
    }
    lister.Shapes("notes master", *presentation->NotesMaster()->Shapes());
    lister.Text("notes master header", *presentation->NotesMaster()->HeadersFooters()->Header());
    lister.Text("notes master footer", *presentation->NotesMaster()->HeadersFooters()->Footer());
    lister.Shapes("handout master", *presentation->HandoutMaster()->Shapes());
    return lister.Take();
}

String BinaryOnDisk::BuiltInText(StringView name) const
{
    return powerpoint::TextOf(PropertyOf(*Open()->BuiltInDocumentProperties(), name)->Value());
}

powerpoint::Value BinaryOnDisk::CustomValue(StringView name) const
{
    return PropertyOf(*Open()->CustomDocumentProperties(), name)->Value();
}

std::string BinaryOnDisk::Stream(const std::string& name) const
{
    const std::string bytes = Bytes();
    return CompoundFile(bytes).Stream(name).value();
}

}  // namespace tessarine::test
