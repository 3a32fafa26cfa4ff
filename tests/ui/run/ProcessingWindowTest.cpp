#include "ui/run/ProcessingWindowTest.h"

#include <QPushButton>
#include <QTabWidget>

#include "app/GlobalState.h"

namespace tessarine
{

std::shared_ptr<CounterStatuses> Counted(const String& path, const std::vector<PairResult>& pairs)
{
    auto result = std::make_shared<CounterStatuses>();
    for (const PairResult& pair : pairs) {
        const auto status = result->Add(-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1,
                                        FileStatus::NothingCounted, pair.findWhat, u"", u"");
        for (const auto& [location, count] : pair.counts)
            status->PutCount(location, count);
    }
    result->FileName = path;
    result->FileStausAfterProcess = FileStatus::Counted;
    return result;
}

std::shared_ptr<CounterStatuses> NothingCounted(const String& path)
{
    auto result = std::make_shared<CounterStatuses>();
    result->FileName = path;
    result->FileStausAfterProcess = FileStatus::NothingCounted;
    return result;
}

std::shared_ptr<CounterStatuses> NotProcessed(const String& path, const String& error)
{
    auto result = std::make_shared<CounterStatuses>();
    result->FileName = path;
    result->mError = error;
    return result;
}

namespace
{

void AppendRows(const QAbstractItemModel& model, const QModelIndex& parent, const std::string& indent,
                std::vector<std::string>& rows)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        rows.push_back(indent + index.data().toString().toStdString());
        AppendRows(model, index, indent + "  ", rows);
    }
}

}  // namespace

std::vector<std::string> RowsOf(const ResultTree& tree)
{
    std::vector<std::string> rows;
    AppendRows(*tree.model(), {}, "", rows);
    return rows;
}

ProcessingWindowTest::ProcessingWindowTest()
{
    CurrentProject = std::make_shared<Project>();
    previousTimers_ = SetSystemTimer({[this](TimerIdentifier, std::int32_t interval, TimerCallback callback) {
                                          intervals_.push_back(interval);
                                          timers_[++lastTimer_] = std::move(callback);
                                          return lastTimer_;
                                      },
                                      [this](TimerIdentifier identifier) { timers_.erase(identifier); }});
    previousClock_ = SetTimeOfDay([this] { return now_; });
}

ProcessingWindowTest::~ProcessingWindowTest()
{
    delete frmProcessingDocuments::Loaded();
    SetSystemTimer(previousTimers_);
    SetTimeOfDay(previousClock_);
    SetDeliverPendingEvents({});
    IsSearchRun = false;
    CurrentProject.reset();
}

frmProcessingDocuments& ProcessingWindowTest::Window()
{
    if (frmProcessingDocuments::Loaded() == nullptr) {
        frmProcessingDocuments::Instance().show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(frmProcessingDocuments::Loaded()));
    }
    return frmProcessingDocuments::Instance();
}

frmProcessingDocuments& ProcessingWindowTest::BeginRun()
{
    Window().SetProgressRange(5);
    Window().ShowProgressTab();
    Window().IsRunGoing = true;
    Window().SetOKCaption(u"Cancel");
    return Window();
}

void ProcessingWindowTest::EndRun()
{
    Window().IsComplited = true;
    Window().SetOKCaption(u"OK");
}

std::string ProcessingWindowTest::Text(const char* name)
{
    return The(name).property("text").toString().toStdString();
}

void ProcessingWindowTest::Click(const char* name)
{
    ASSERT_TRUE(IsVisible(name)) << name;
    QTest::mouseClick(&The<QPushButton>(name), Qt::LeftButton);
}

void ProcessingWindowTest::ShowTab(int tab)
{
    QTabBar* const bar = The<QTabWidget>("SSTab1").tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
}

void ProcessingWindowTest::Add(const std::shared_ptr<CounterStatuses>& status, bool isReqCount)
{
    AddResult(Window().TreeOf(status), *status, isReqCount, {mFilesChanged, mTotalChanges});
}

void ProcessingWindowTest::AddWithHits(const std::shared_ptr<CounterStatuses>& status, const std::vector<Hit>& hits,
                                       bool isReqCount)
{
    for (const Hit& hit : hits)
        Window().Hits().Take(hit);
    const StoredHits stored = Window().Hits().Add(ReportOf(status->FileName, *status));
    AddResult(Window().TreeOf(status), *status, isReqCount, {mFilesChanged, mTotalChanges}, {}, &stored);
}

QPoint ProcessingWindowTest::PointOf(ResultTree& tree, const QModelIndex& index)
{
    tree.scrollTo(index);
    return tree.visualRect(index).center();
}

void ProcessingWindowTest::DoubleClick(ResultTree& tree, QPoint point)
{
    QTest::mouseMove(tree.viewport(), point);
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, point);
}

void ProcessingWindowTest::Tick()
{
    const auto running = timers_;
    for (const auto& [identifier, callback] : running)
        callback(identifier);
}

}  // namespace tessarine
