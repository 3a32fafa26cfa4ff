#include "RunTest.h"

#include <algorithm>

#include "log/Treatments.h"
#include "platform/PathSeparator.h"

namespace tessarine
{

RunTest::RunTest() : project_(powerPoint_.Provider())
{
    project_->BeforFileProcess += [this](const String& path) { events_.push_back("before " + Short(ToUtf8(path))); };
    project_->AfterFileProcess += [this](const std::shared_ptr<CounterStatuses>& result) {
        results_.push_back(result);
        if (!result) {
            events_.push_back("after nothing");
            return;
        }
        const std::string error = ToUtf8(result->mError);
        events_.push_back("after " + Short(ToUtf8(result->FileName)) + " " +
                          std::to_string(result->FileStausAfterProcess) + (error.empty() ? "" : " " + error));
    };
    project_->ProcessCancel += [this] { events_.emplace_back("cancel"); };
    project_->FailurePassedOver = [this](const String& path, const Failure& failure) {
        passedOver_.push_back(Short(ToUtf8(path)) + " " + std::to_string(failure.number));
    };
}

String RunTest::AddFile(StringView name, const String& text)
{
    const String path = folder_.Write(name, "bytes of " + ToUtf8(name));
    FakeContent content;
    content.slides = {{.shapes = {Placeholder(text)}}};
    decks_.emplace_back(name, FakeDeck(content));
    powerPoint_.Put(path, decks_.back().second);
    project_->FilesToProcess.push_back(path);
    return path;
}

String RunTest::AddMissingFile(StringView name)
{
    project_->FilesToProcess.push_back(folder_.PathOf(name));
    return project_->FilesToProcess.back();
}

void RunTest::AddPair(const String& findWhat, const String& replaceWith)
{
    const auto options = std::make_shared<OptionSetting>();
    options->InSlides = true;
    project_->FindAndReplaceList->Add(findWhat, replaceWith, options, project_.get());
}

std::int32_t RunTest::SearchFails()
{
    return Skip([&] { project_->Search(); });
}

std::vector<std::string> RunTest::Calls() const
{
    std::vector<std::string> calls;
    for (const std::string& call : powerPoint_.script.Calls())
        calls.push_back(Short(call));
    return calls;
}

std::size_t RunTest::CallsOf(const std::string& call) const
{
    const std::vector<std::string> calls = Calls();
    return static_cast<std::size_t>(std::count(calls.begin(), calls.end(), call));
}

String RunTest::TextOfFile(StringView name) const
{
    for (const auto& [deckName, deck] : decks_)
        if (deckName == name)
            return deck.content->slides.at(0).shapes.at(0).text;
    return u"<no such file>";
}

std::vector<std::string> RunTest::Log() const
{
    std::vector<std::string> lines;
    for (const std::string& line : log_.Lines())
        lines.push_back(Short(line));
    return lines;
}

std::string RunTest::Short(std::string text) const
{
    const std::string folder = ToUtf8(folder_.PathOf(u""));
    for (std::size_t at = text.find(folder); at != std::string::npos; at = text.find(folder))
        text.erase(at, folder.size());
    std::ranges::replace(text, static_cast<char>(PathSeparator), '/');
    return text;
}

}  // namespace tessarine
