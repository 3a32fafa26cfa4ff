#include "ui/main/FailingPowerPointTest.h"

#include <algorithm>

#include <QProgressBar>
#include <QTreeWidget>

#include "office/builtin/Provider.h"

namespace tessarine
{

/// The names of the windows that have shown themselves since it was made.
class FailingPowerPointTest::ShownWindows : public QObject
{
public:
    ShownWindows() { QCoreApplication::instance()->installEventFilter(this); }

    const std::set<std::string>& Names() const { return names_; }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        const auto* const widget = qobject_cast<QWidget*>(object);
        if (event->type() == QEvent::Show && widget != nullptr && widget->isWindow())
            names_.insert(widget->objectName().toStdString());
        return false;
    }

private:
    std::set<std::string> names_;
};

FailingPowerPointTest::FailingPowerPointTest()
    : office(builtin::CreateProvider()), shown_(std::make_unique<ShownWindows>())
{
    RunOn(office.Provider());
}

FailingPowerPointTest::~FailingPowerPointTest() = default;

void FailingPowerPointTest::TearDown()
{
    EXPECT_EQ(shown_->Names(), expectedWindows);
}

std::string FailingPowerPointTest::NotOpened()
{
    return InProcessing("lblNotOpened").isVisible() ? Label("lblNotOpened") : std::string();
}

std::string FailingPowerPointTest::NotProcessed()
{
    return InProcessing("lblNotProcessed").isVisible() ? Label("lblNotProcessed") : std::string();
}

std::vector<std::string> FailingPowerPointTest::Failures()
{
    const QAbstractItemModel& list = *InProcessing<QTreeWidget>("lstFailures").model();
    std::vector<std::string> lines;
    for (int row = 0; row < list.rowCount(); ++row)
        lines.push_back(WithoutFolder(
            (list.index(row, 0).data().toString() + ": " + list.index(row, 1).data().toString()).toStdString()));
    return lines;
}

void FailingPowerPointTest::ExpectFinished(const std::string& lblDocChanged)
{
    const auto& progress = InProcessing<QProgressBar>("pgbar1");
    EXPECT_EQ(Label("lblDocChanged"), lblDocChanged);
    EXPECT_EQ(progress.value(), progress.maximum());
    EXPECT_TRUE(Processing().IsComplited);
    EXPECT_EQ(Caption("cmdOK"), "OK");
    EXPECT_EQ(messages.Pointers().back(), MousePointer::Default);
    EXPECT_FALSE(Processing().tmrelapsedSecsX->Enabled());
    EXPECT_FALSE(TellsOfAnEarlyEnd());
    EXPECT_TRUE(CurrentProject->options->IsFindOnly);
    EXPECT_EQ(office.Running(), 0);
}

void FailingPowerPointTest::ExpectLeftAt(const std::string& lblDocChanged)
{
    EXPECT_EQ(Label("lblDocChanged"), lblDocChanged);
    EXPECT_FALSE(Processing().IsComplited);
    EXPECT_EQ(Caption("cmdOK"), "Cancel");
    EXPECT_TRUE(TellsOfAnEarlyEnd());
    EXPECT_EQ(messages.Pointers().back(), MousePointer::Hourglass);
}

void FailingPowerPointTest::ExpectNextRunToWork()
{
    if (Processing().IsComplited)
        ClickInProcessing("cmdOK");
    else
        Processing().close();
    ASSERT_EQ(frmProcessingDocuments::Loaded(), nullptr);
    Presentation(u"z next.pptx", {u"Fabrikam"});

    Replace();

    EXPECT_TRUE(IsChanged(u"z next.pptx"));
    EXPECT_TRUE(Processing().IsComplited);
    EXPECT_EQ(Caption("cmdOK"), "OK");
    EXPECT_EQ(NotOpened(), "");
    EXPECT_FALSE(TellsOfAnEarlyEnd());
    EXPECT_EQ(messages.Pointers().back(), MousePointer::Default);
    EXPECT_EQ(office.Running(), 0);
}

std::vector<std::string> FailingPowerPointTest::Calls() const
{
    std::vector<std::string> calls;
    for (const std::string& call : office.script.Calls())
        calls.push_back(WithoutFolder(call));
    return calls;
}

std::size_t FailingPowerPointTest::CallsOf(const std::string& call) const
{
    return static_cast<std::size_t>(std::ranges::count(Calls(), call));
}

std::vector<std::string> NodesOf(const std::vector<std::string>& files)
{
    std::vector<std::string> lines;
    for (const std::string& file : files)
        for (const std::string& line : {file, std::string("\tFabrikam"), std::string("\t\tSlides (1)")})
            lines.push_back(line);
    return lines;
}

}  // namespace tessarine
