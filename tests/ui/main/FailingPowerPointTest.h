#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "support/FailingPowerPoint.h"
#include "ui/main/RunFromWindowTest.h"

namespace tessarine
{

/// What log and window say: of an object that can't be made, of a null reference, and of a file that ends without a
/// result.
inline const std::string noServer = "ActiveX component can't create object";
inline const std::string notSet = "Object variable or With block variable not set";
inline const std::string noResult =
    "Error 91 (" + notSet + ") in procedure mProject_AfterFileProcess at Line No. 0 of Form frmMain";

/// Runs from the main window on a PowerPoint that changes real presentations until a call of the test's choice fails.
/// Whatever fails, no run shows any other window than the two of its own: no box, and not the one that asks for a
/// manual intervention.
class FailingPowerPointTest : public RunFromWindowTest
{
protected:
    FailingPowerPointTest();
    ~FailingPowerPointTest() override;
    void TearDown() override;

    // What the person sees.

    std::vector<std::string> Changed() { return Lines(*Processing().trvChangedFiles); }
    std::vector<std::string> Unchanged() { return Lines(*Processing().trvNotChangedFiles); }
    std::vector<std::string> Errors() { return Lines(*Processing().trvErrors); }

    /// The line about files that could not be opened; empty when it can't be seen.
    std::string NotOpened();

    /// The line about files that were opened and failed then; empty when it can't be seen.
    std::string NotProcessed();

    /// The lines of the list of failures: a file, a colon, and the reason.
    std::vector<std::string> Failures();

    /// Whether the line about a run that a failure ended can be seen.
    bool TellsOfAnEarlyEnd() { return InProcessing("lblRunFailed").isVisible(); }

    /// The run has come to its end and says so, in these words.
    void ExpectFinished(const std::string& lblDocChanged);

    /// The run has ended before its end: the window still stands at a file, under the hourglass.
    void ExpectLeftAt(const std::string& lblDocChanged);

    /// Closes the processing window as a person does, starts a replacement of one more presentation and sees it done.
    void ExpectNextRunToWork();

    // What was done.

    bool IsChanged(StringView name) const { return TextsOf(name) == std::vector<std::string>{"Contoso"}; }

    /// The calls to PowerPoint, see FailingPowerPoint, without the folder.
    std::vector<std::string> Calls() const;
    std::size_t CallsOf(const std::string& call) const;

    FailingPowerPoint office;
    std::set<std::string> expectedWindows{"frmMain", "frmProcessingDocuments"};

private:
    class ShownWindows;
    const std::unique_ptr<ShownWindows> shown_;
};

/// The lines that a file with one occurrence has in the tree of changed files.
std::vector<std::string> NodesOf(const std::vector<std::string>& files);

}  // namespace tessarine
