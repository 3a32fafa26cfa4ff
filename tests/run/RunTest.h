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

/// A project over real files in a folder of its own, which a stand-in for PowerPoint opens. Calls, events and log lines
/// name files without the folder.
class RunTest : public testing::Test
{
protected:
    RunTest();

    /// Writes a file that PowerPoint opens as one slide with this text, and adds it to the files to process. Gives the
    /// full path.
    String AddFile(StringView name, const String& text = u"a cat");

    /// Adds a path to the files to process that neither the disk nor PowerPoint knows. Gives the full path.
    String AddMissingFile(StringView name);

    /// Adds a pair that is looked for on slides.
    void AddPair(const String& findWhat, const String& replaceWith);

    /// Runs a search and gives the number of the failure that it raises, 0 when it raises none.
    std::int32_t SearchFails();

    /// What was called, and how often one call was made.
    std::vector<std::string> Calls() const;
    std::size_t CallsOf(const std::string& call) const;

    /// The text of a file's first shape, as PowerPoint holds it now.
    String TextOfFile(StringView name) const;

    /// The log without the folder's path.
    std::vector<std::string> Log() const;

    /// A text without the folder's path wherever it stands, and with "/" in what is left of paths.
    std::string Short(std::string text) const;

    const TemporaryFolder folder_;
    const ErrorLogRecorder log_;
    const MessageRecorder messages_;
    FakePowerPoint powerPoint_;
    const ProjectOwner project_;

    /// What the project raised, in order: "before a.ppt"; "after a.ppt 2" with the status and the error, if any;
    /// "after nothing" for a null result; "cancel".
    std::vector<std::string> events_;
    /// "a.ppt 1234" for each failure that was passed over.
    std::vector<std::string> passedOver_;
    /// What AfterFileProcess was raised with; the same object may stand here twice.
    std::vector<std::shared_ptr<CounterStatuses>> results_;

private:
    std::vector<std::pair<String, FakeDeck>> decks_;
};

}  // namespace tessarine
