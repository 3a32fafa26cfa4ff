#include "RunCost.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <limits>
#include <memory>
#include <string>

#include <QApplication>
#include <QProgressBar>
#include <QTabWidget>
#include <QTest>

#include "../Decks.h"
#include "../Usage.h"
#include "app/GlobalState.h"
#include "desktop/DesktopPorts.h"
#include "engine/CounterStatuses.h"
#include "engine/Hit.h"
#include "i18n/QtText.h"
#include "office/builtin/Provider.h"
#include "platform/Messages.h"
#include "ui/main/frmMain.h"
#include "ui/main/StartCommand.h"
#include "ui/run/frmProcessingDocuments.h"
#include "ui/run/ResultTree.h"

namespace tessarine::bench
{

namespace
{

constexpr int passes = 7;

/// The job of both runs: three pairs, one of them found, in slides, shapes and notes of all decks.
void MakeJob(const String& folder)
{
    CurrentProject = std::make_shared<Project>(builtin::CreateProvider());
    for (const char16_t* text : {u"Fabrikam", u"nowhere to be seen", u"nothing either"}) {
        const auto setting = std::make_shared<OptionSetting>();
        setting->InSlides = setting->InShapesAndTextboxes = setting->InNotes = true;
        CurrentProject->FindAndReplaceList->Add(text, u"", setting, CurrentProject);
    }
    CurrentProject->options->FileToProcessFolderPath = folder;
    CurrentProject->options->ComaSepAllowedExtensions = u"*.Ppt*";
    CurrentProject->options->RequiredFindAndReplaceCount = true;
    CurrentProject->CustomProperies->Add(u"FindAndReplaceFilePath", {});
    CurrentProject->CustomProperies->Add(u"FindAndReplaceListSource", u"INTERNAL");
}

void EndJob()
{
    CurrentProject->FindAndReplaceList.reset();
    CurrentProject.reset();
}

/// A folder in which every deck of a set stands under ten names, so that a run lasts for some time.
std::filesystem::path TenTimes(const DeckSet& set)
{
    namespace fs = std::filesystem;
    const auto decks = MakeDecks(set, TESSARINE_BENCH_DECKS);
    const fs::path folder = decks.front().parent_path().concat(", ten times");
    fs::create_directories(folder);
    for (const fs::path& deck : decks)
        for (int copy = 0; copy < 10; ++copy) {
            const fs::path link = folder / (std::to_string(copy) + ' ' + deck.filename().string());
            if (!fs::exists(link))
                fs::create_hard_link(deck, link);
        }
    return folder;
}

/// As tessarine-batch goes about it, with the search for the files.
double BareRun()
{
    const double start = ProcessorSeconds();
    CurrentProject->GetFileToProcessFileCount();
    CurrentProject->Search();
    return ProcessorSeconds() - start;
}

double RunInWindow(frmMain& window)
{
    const double start = ProcessorSeconds();
    window.cmdStartReplacing_Click(StartCommand::Searching);
    const double taken = ProcessorSeconds() - start;
    frmProcessingDocuments::Instance().close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return taken;
}

std::shared_ptr<CounterStatuses> Result(int file)
{
    constexpr int pairs = 50;
    auto result = std::make_shared<CounterStatuses>();
    for (int pair = 0; pair < pairs; ++pair)
        result->Add(pair % 7, -1, pair % 3, -1, -1, -1, -1, 0, -1, -1, -1, -1, -1, -1, FileStatus::Counted,
                    FromQt(QStringLiteral("Product name %1").arg(pair)), u"", u"");
    result->FileStausAfterProcess = FileStatus::Counted;
    result->FileName = FromQt(QStringLiteral("/home/maria/Presentations/2026/Customer %1/Offer.pptx").arg(file));
    return result;
}

/// What a file's run tells of its hits: so many, each with its context.
void TellHits(int hits)
{
    for (int i = 0; i < hits; ++i) {
        HitPlace place;
        place.pair = i % 50 + 1;
        place.slide = i / 10 + 1;
        place.slideTitle = u"What we achieved";
        place.shape = 2;
        place.shapeName = u"Content Placeholder 2";
        Hit hit;
        hit.place = std::make_shared<const HitPlace>(std::move(place));
        hit.paragraph = 1;
        hit.before = String(60, u'b');
        hit.text = u"Fabrikam";
        hit.after = String(60, u'a');
        CurrentProject->HitFound(hit);
    }
}

/// Prints what something takes that a person does, until the window shows it.
void MeasureStep(const char* what, const std::function<void()>& act)
{
    const auto start = std::chrono::steady_clock::now();
    act();
    QCoreApplication::processEvents();
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
    std::printf("  %s: %.1f ms\n", what, taken.count());
}

/// What a person does with the results of a long run.
void MeasureResults(frmProcessingDocuments& window)
{
    ResultTree& tree = *window.trvChangedFiles;
    MeasureStep("all files come into sight", [&] { window.findChild<QTabWidget*>("SSTab1")->setCurrentIndex(1); });
    MeasureStep("a name in the filter", [&] { tree.PutFilter({"Offer", false}); });
    MeasureStep("a name that every tenth path holds", [&] { tree.PutFilter({"7/", false}); });
    MeasureStep("only pairs with hits", [&] { tree.PutFilter({{}, true}); });
    MeasureStep("all again", [&] { tree.PutFilter({}); });
    MeasureStep("all files opened", [&] { tree.ExpandAll(); });
    MeasureStep("the hits of a file", [&] { tree.setCurrentIndex(tree.model()->index(10'000, 0)); });
}

}  // namespace

void MeasureRuns()
{
    std::printf("A find with three pairs, lowest processor time of %d passes\n", passes);
    for (const DeckSet& set : {Small, Middle}) {
        MakeJob(FromUtf8(TenTimes(set).string()));
        double bare = std::numeric_limits<double>::max();
        double desktop = bare;
        {
            frmMain window;
            window.show();
            BareRun();
            for (int pass = 0; pass < passes; ++pass) {
                {
                    const DesktopPorts ports;
                    SetMessageBox([](const Message&) { return MessageAnswer::Yes; });
                    desktop = std::min(desktop, RunInWindow(window));
                }
                // The window's receivers stay; without its project they have nothing to do with this run.
                const auto project = CurrentProject;
                MakeJob(project->options->FileToProcessFolderPath);
                bare = std::min(bare, BareRun());
                EndJob();
                CurrentProject = project;
            }
        }
        EndJob();
        std::printf("  10 x %-19s bare %8.1f ms, desktop %8.1f ms, x %.2f\n", std::string(set.name).c_str(), bare * 1e3,
                    desktop * 1e3, desktop / bare);
    }
}

void MeasureReport()
{
    constexpr int files = 20'000;
    constexpr int hitsOfFile = 20;
    MakeJob(u"/nowhere");
    const DesktopPorts ports;
    frmMain window;
    window.show();
    frmProcessingDocuments& processing = frmProcessingDocuments::Instance(&window);
    processing.show();
    processing.SetProgressRange(files);
    processing.ShowProgressTab();
    const std::int64_t before = PeakKibibytes();

    double report = 0;
    double slowest = 0;
    for (int file = 0; file < files; ++file) {
        const auto result = Result(file);
        const auto start = std::chrono::steady_clock::now();
        window.mProject_BeforFileProcess(result->FileName);
        TellHits(hitsOfFile);
        window.mProject_AfterFileProcess(result);
        DeliverPendingEvents();
        const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
        report += taken.count();
        slowest = std::max(slowest, taken.count());
    }
    std::printf("The report of %d files with 50 pairs and %d hits: %.3f ms a file, slowest %.1f ms, %.0f MiB\n", files,
                hitsOfFile, report / files, slowest, static_cast<double>(PeakKibibytes() - before) / 1024);

    processing.IsComplited = true;
    const auto start = std::chrono::steady_clock::now();
    processing.cmdCopyLog_Click();
    const std::chrono::duration<double, std::milli> copied = std::chrono::steady_clock::now() - start;
    std::printf("  its log to the clipboard: %.0f ms\n", copied.count());
    MeasureResults(processing);
    processing.close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EndJob();
}

}  // namespace tessarine::bench
