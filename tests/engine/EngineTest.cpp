#include "EngineTest.h"

#include <utility>

#include "support/SurfaceRoute.h"

namespace tessarine
{

EngineTest::EngineTest()
{
    Open({});
    Look({});
}

void EngineTest::Open(FakeContent content)
{
    deck_ = FakeDeck(std::move(content));
    engine.xPresentation = Routed(deck_.Open(script));
}

void EngineTest::Look(const Search& search)
{
    engine.mItem = std::make_shared<FindAndReplaceItem>();
    engine.mItem->FindWhat = search.find;
    engine.mItem->ReplaceWith = search.with;
    engine.mItem->OptionSetting->MatchCase = search.matchCase;
    engine.mItem->OptionSetting->MatchWholeWord = search.wholeWord;
    engine.mItem->Project = project.get();
    engine.MatchCaseFlag = search.matchCase ? 1 : 0;
    engine.WholeWordsFlag = search.wholeWord ? 1 : 0;
    engine.mIsFindOnly = search.findOnly;
    project->options->IsFindOnly = search.findOnly;
    engine.IsRequiredCount = search.countAll;
}

std::shared_ptr<FindAndReplaceItem> EngineTest::AddItem(const String& find, const String& with,
                                                        const std::vector<Location>& locations)
{
    if (!engine.mItems)
        engine.mItems = std::make_shared<FindAndReplaceItems>();
    auto options = std::make_shared<OptionSetting>();
    for (const Location location : locations)
        (*options).*SearchLocations[static_cast<std::size_t>(location)].isOn = true;
    return engine.mItems->Add(find, with, options, project.get());
}

std::shared_ptr<CounterStatuses> EngineTest::ProcessFile()
{
    return engine.ProcessFile(u"a.pptx", u"", nullptr);
}

Failure EngineTest::FailureOf(const std::function<void()>& body)
{
    try {
        body();
    } catch (const Failure& failure) {
        return failure;
    }
    return {0, u"no failure"};
}

}  // namespace tessarine
