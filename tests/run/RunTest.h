#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "engine/CounterStatuses.h"
#include "model/Project.h"
#include "support/ErrorLogRecorder.h"
#include "support/FakePowerPoint.h"
#include "support/MessageRecorder.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

/// A project over real files in a folder of its own, with a stand-in for PowerPoint behind it. What it shows names
/// files without the folder.
class RunTest : public testing::Test
{
protected:
    RunTest();

    /// Writes a file, puts a presentation with a text behind it, and adds it to the files to process.
    String AddFile(StringView name, const String& text = u"a cat");

    /// Adds a file that stands in the list, but neither on disk nor behind PowerPoint.
    String AddMissingFile(StringView name);

    void AddPair(const String& findWhat, const String& replaceWith);

    /// The run raises a failure of this number; 0 for none.
    std::int32_t SearchFails();

    /// What was called, and how often one call was made.
    std::vector<std::string> Calls() const;
    std::size_t CallsOf(const std::string& call) const;

    /// The text of a file's first shape, as PowerPoint holds it now.
    String TextOfFile(StringView name) const;

    /// The log without the folder's path.
    std::vector<std::string> Log() const;

    std::string Short(std::string text) const;

    const TemporaryFolder folder_;
    const ErrorLogRecorder log_;
    const MessageRecorder messages_;
    FakePowerPoint powerPoint_;
    const ProjectOwner project_;

    /// "before a.ppt", "after a.ppt 2" (with the status and the error, if any), "after nothing", "cancel".
    std::vector<std::string> events_;
    /// "a.ppt 1234" for each failure that was passed over.
    std::vector<std::string> passedOver_;
    std::vector<std::shared_ptr<CounterStatuses>> results_;

private:
    std::vector<std::pair<String, FakeDeck>> decks_;
};

}  // namespace tessarine
