#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/SearchFunctions.h"
#include "model/Project.h"
#include "platform/Failure.h"
#include "support/Deliveries.h"
#include "support/ErrorLogRecorder.h"
#include "support/FakePowerPoint.h"

namespace tessarine
{

struct Search {
    String find{};
    String with{};
    bool matchCase = false;
    bool wholeWord = false;
    bool findOnly = false;
    bool countAll = true;
};

/// An engine over a stand-in presentation, with an error log and the delivery of events recorded.
class EngineTest : public ::testing::Test
{
protected:
    EngineTest();

    /// Opens a presentation with this content.
    void Open(FakeContent content);

    /// The content as it stands now.
    FakeContent& content() { return *deck_.content; }

    /// Makes the pair that is looked for, in the way ProcessFile does.
    void Look(const Search& search);

    /// Adds a pair for ProcessFile with these locations on. It belongs to the test's project.
    std::shared_ptr<FindAndReplaceItem> AddItem(const String& find, const String& with,
                                                const std::vector<Location>& locations);

    std::shared_ptr<CounterStatuses> ProcessFile();

    /// The lines of the error log without their date and time.
    std::vector<std::string> Log() const { return log_.Lines(); }

    /// The failure that the body raises; one without a number when it raises none.
    static Failure FailureOf(const std::function<void()>& body);

    FakeScript script;
    SearchFunctions engine;
    ProjectOwner project;

private:
    FakeDeck deck_;
    ErrorLogRecorder log_;
};

/// For readable parameterised tests: the name alone is printed.
struct Named {
    const char* name;
};

inline void PrintTo(const Named& named, std::ostream* stream)
{
    *stream << named.name;
}

template <class Case>
std::string NameOf(const ::testing::TestParamInfo<Case>& info)
{
    return info.param.name;
}

}  // namespace tessarine
