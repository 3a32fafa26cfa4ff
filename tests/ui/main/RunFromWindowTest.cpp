#include "ui/main/RunFromWindowTest.h"

#include <sstream>

#include <QLabel>
#include <QPushButton>

#include "office/builtin/Provider.h"
#include "platform/NativePath.h"
#include "platform/PathSeparator.h"
#include "support/PackageReader.h"
#include "ui/main/StartCommand.h"
#include "ui/run/QtTimer.h"
#include "ui/run/ResultTree.h"

namespace tessarine
{

RunFromWindowTest::RunFromWindowTest()
{
    UseQtTimers();
    previousEvents_ = SetDeliverPendingEvents([this] {
        if (atDelivery)
            atDelivery();
        QCoreApplication::processEvents();
    });
    RunOn(builtin::CreateProvider());
}

RunFromWindowTest::~RunFromWindowTest()
{
    if (auto* const window = frmProcessingDocuments::Loaded()) {
        window->IsRunGoing = false;
        window->close();
    }
    SetDeliverPendingEvents(previousEvents_);
}

void RunFromWindowTest::RunOn(std::shared_ptr<powerpoint::Provider> provider)
{
    CurrentProject->FindAndReplaceList.reset();
    CurrentProject = std::make_shared<Project>(std::move(provider));
    for (const char16_t* name : {u"FindAndReplaceFilePath", u"FindAndReplaceListSource", u"LANG"})
        CurrentProject->CustomProperies->Add(name, {});
}

String RunFromWindowTest::Presentation(StringView name, const std::vector<String>& titles)
{
    test::Deck deck;
    for (const String& title : titles)
        deck.Slide(test::Title(title));
    return File(name, deck.Bytes());
}

String RunFromWindowTest::File(StringView name, const std::string& bytes)
{
    return decks.Write(name, bytes);
}

void RunFromWindowTest::SetJob(const std::vector<Pair>& pairs)
{
    SetPairs(pairs);
    Options().FileToProcessFolderPath = decks.Path();
    Options().RequiredFindAndReplaceCount = true;
    Window().LoadProjectOnForm();
}

void RunFromWindowTest::SetJobOver(const std::vector<String>& names)
{
    for (const String& name : names)
        Presentation(name, {u"Fabrikam"});
    SetJob({{u"Fabrikam", u"Contoso"}});
}

void RunFromWindowTest::Before(StringView name, std::function<void()> act)
{
    CurrentProject->BeforFileProcess += [name = PathOf(name), act = std::move(act)](const String& path) {
        if (path == name)
            act();
    };
}

void RunFromWindowTest::Start(int index)
{
    messages.Next(MessageAnswer::Yes);
    Click(index == StartCommand::Replacing ? "cmdStartReplacing(0)" : "cmdStartReplacing(1)");
}

void RunFromWindowTest::Find()
{
    Start(StartCommand::Searching);
}

void RunFromWindowTest::Replace()
{
    Start(StartCommand::Replacing);
}

frmProcessingDocuments& RunFromWindowTest::Processing()
{
    if (auto* const window = frmProcessingDocuments::Loaded())
        return *window;
    throw std::runtime_error("no window of a run is loaded");
}

std::string RunFromWindowTest::Label(const char* name)
{
    return WithoutFolder(InProcessing<QLabel>(name).text().toStdString());
}

std::string RunFromWindowTest::Caption(const char* button)
{
    return InProcessing<QPushButton>(button).text().toStdString();
}

void RunFromWindowTest::ClickInProcessing(const char* button)
{
    ASSERT_TRUE(InProcessing(button).isVisible()) << button << " can't be seen";
    QTest::mouseClick(&InProcessing(button), Qt::LeftButton);
}

std::vector<std::string> RunFromWindowTest::Lines(const ResultTree& tree) const
{
    std::vector<std::string> lines;
    const std::function<void(const QModelIndex&, const std::string&)> add = [&](const QModelIndex& parent,
                                                                                const std::string& indent) {
        for (int row = 0; row < tree.model()->rowCount(parent); ++row) {
            const QModelIndex node = tree.model()->index(row, 0, parent);
            lines.push_back(indent + WithoutFolder(node.data().toString().toStdString()));
            add(node, indent + '\t');
        }
    };
    add({}, {});
    return lines;
}

std::string RunFromWindowTest::WithoutFolder(std::string text) const
{
    const std::string prefix = ToUtf8(decks.Path() + PathSeparator);
    for (auto at = text.find(prefix); at != std::string::npos; at = text.find(prefix))
        text.erase(at, prefix.size());
    return text;
}

namespace
{

/// A line of the error log ends in "- ", the date and time, and CR.
std::string WithoutTime(const std::string& line)
{
    const std::size_t time = line.rfind("- ");
    const bool isTime = time != std::string::npos && line.ends_with('\r') &&
                        line.find_first_not_of("0123456789/: APM", time + 2) == line.size() - 1;
    return isTime ? line.substr(0, time) : line;
}

}  // namespace

std::vector<std::string> RunFromWindowTest::LogLines()
{
    std::vector<std::string> lines;
    std::istringstream log(Log());
    for (std::string line; std::getline(log, line);)
        if (!line.starts_with("In file "))
            lines.push_back(WithoutFolder(WithoutTime(line)));
    return lines;
}

std::vector<std::string> RunFromWindowTest::TextsOf(StringView name) const
{
    const auto package = test::PackageReader::FromFile(NativePath(PathOf(name)));
    std::vector<std::string> texts;
    for (std::size_t slide = 1; slide <= package.SlideParts().size(); ++slide)
        for (const String& text : test::TextsOf(package, static_cast<int>(slide)))
            texts.push_back(ToUtf8(text));
    return texts;
}

}  // namespace tessarine
