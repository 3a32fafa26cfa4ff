#pragma once

#include <functional>
#include <set>

#include "support/Deck.h"
#include "ui/main/MainWindowTest.h"
#include "ui/run/frmProcessingDocuments.h"

namespace tessarine
{

class ResultTree;

/// A run from the main window over real presentations in a folder of the test, on the built-in engine or
/// the stand-in for PowerPoint. Events are delivered wherever the run asks for it; the question before a run is
/// answered with Yes.
class RunFromWindowTest : public MainWindowTest
{
protected:
    RunFromWindowTest();
    ~RunFromWindowTest() override;

    /// Puts a new project in force that runs on this PowerPoint, in place of the built-in engine. Before the window is
    /// made.
    static void RunOn(std::shared_ptr<powerpoint::Provider> provider);

    /// A presentation whose slides have these titles; gives its full path.
    String Presentation(StringView name, const std::vector<String>& titles);
    String File(StringView name, const std::string& bytes);
    String PathOf(StringView name) const { return decks.PathOf(name); }

    /// Sets the job over the folder of the presentations, with these pairs.
    void SetJob(const std::vector<Pair>& pairs);

    /// Presentations under these names with the title "Fabrikam", and the job that makes "Contoso" of it.
    void SetJobOver(const std::vector<String>& names);

    /// Runs before this presentation is processed.
    void Before(StringView name, std::function<void()> act);

    void Find();     ///< By a click on the start button, to the end of the run.
    void Replace();  ///< The same.

    frmProcessingDocuments& Processing();

    template <class Control = QWidget>
    Control& InProcessing(const char* name)
    {
        auto* const control = Processing().findChild<Control*>(QString::fromLatin1(name));
        if (control == nullptr)
            throw std::runtime_error(std::string("no control named ") + name);
        return *control;
    }

    std::string Label(const char* name);
    std::string Caption(const char* button);
    void ClickInProcessing(const char* button);

    /// A tree as lines, a tab before an item, two before a location, without the folder.
    std::vector<std::string> Lines(const ResultTree& tree) const;

    std::string WithoutFolder(std::string text) const;
    /// Of the error log, without folder, date and time, and without the lines that only name the file of the one
    /// before.
    std::vector<std::string> LogLines();

    /// Texts of the slides of a presentation on disk, read by the tests' own reader.
    std::vector<std::string> TextsOf(StringView name) const;

    /// Runs at each delivery of events in a run.
    std::function<void()> atDelivery;

    const TemporaryFolder decks;

private:
    void Start(int index);

    PendingEventsPort previousEvents_;
};

}  // namespace tessarine
