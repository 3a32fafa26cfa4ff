#include <gmock/gmock.h>

#include <deque>
#include <pugixml.hpp>
#include <set>

#include <QDir>

#include "i18n/QtText.h"
#include "platform/ProgramFolder.h"
#include "shell/Help.h"
#include "support/qt/ShellRecorder.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

/// The help as it lies beside the program.
class HelpTest : public testing::Test
{
protected:
    static QString PathOf(const QString& name) { return QString(TESSARINE_PROGRAM_FOLDER "/Help/%1").arg(name); }

    static QStringList Pages() { return QDir(PathOf({})).entryList({"*.html"}, QDir::Files); }

    static pugi::xml_document Read(const QString& page)
    {
        pugi::xml_document document;
        const auto result = document.load_file(PathOf(page).toUtf8().constData());
        EXPECT_TRUE(result) << page.toStdString() << ": " << result.description() << " at " << result.offset;
        return document;
    }

    /// What a page refers to: its links, pictures and style sheets.
    static QStringList References(const QString& page)
    {
        QStringList references;
        const pugi::xml_document document = Read(page);
        for (const auto& node : document.select_nodes("//@href | //@src"))
            references.push_back(node.attribute().value());
        return references;
    }
};

/// The captions of the English windows, as they are shown.
std::set<std::string> Captions()
{
    std::set<std::string> captions;
    const QString file = QString::fromStdString(ContentOf(FromUtf8(TESSARINE_ENGLISH)));
    for (const QString& line : file.split('\n')) {
        QString caption = line.section('=', 1);
        if (caption.size() > 1 && caption.front() == '"' && caption.back() == '"')
            caption = caption.mid(1, caption.size() - 2);
        if (!caption.isEmpty())
            captions.insert(caption.remove('&').simplified().toStdString());
    }
    return captions;
}

TEST_F(HelpTest, ReachesEveryPageFromTheContents)
{
    std::set<QString> reached = {"index.html"};
    std::deque<QString> open = {"index.html"};
    while (!open.empty()) {
        for (const QString& reference : References(open.front()))
            if (reference.endsWith(".html") && reached.insert(reference).second)
                open.push_back(reference);
        open.pop_front();
    }

    EXPECT_THAT(reached, testing::UnorderedElementsAreArray(Pages()));
    EXPECT_GT(reached.size(), 10u);
}

TEST_F(HelpTest, RefersOnlyToFilesOfItsOwn)
{
    for (const QString& page : Pages())
        for (const QString& reference : References(page)) {
            EXPECT_FALSE(reference.contains('/') || reference.contains(':')) << reference.toStdString();
            EXPECT_TRUE(QFile::exists(PathOf(reference))) << page.toStdString() << ": " << reference.toStdString();
        }
    EXPECT_THAT(ContentOf(FromQt(PathOf("style.css"))), AllOf(Not(HasSubstr("url(")), Not(HasSubstr("@import"))));
}

TEST_F(HelpTest, RunsNothing)
{
    for (const QString& page : Pages())
        EXPECT_TRUE(Read(page).select_nodes("//script | //@*[starts-with(name(), 'on')]").empty())
            << page.toStdString();
}

TEST_F(HelpTest, GivesEveryPageATitleAHeadingAndTheSharedStyle)
{
    for (const QString& page : Pages()) {
        const pugi::xml_document document = Read(page);

        EXPECT_STRNE(document.select_node("/html/head/title").node().child_value(), "") << page.toStdString();
        EXPECT_EQ(document.select_nodes("/html/body/main/h1").size(), 1u) << page.toStdString();
        EXPECT_FALSE(document.select_nodes("/html/head/link[@href='style.css']").empty()) << page.toStdString();
    }
}

TEST_F(HelpTest, NamesControlsByTheCaptionsThatTheyShow)
{
    const std::set<std::string> captions = Captions();
    int count = 0;
    for (const QString& page : Pages()) {
        const pugi::xml_document document = Read(page);
        for (const auto& node : document.select_nodes("//b")) {
            EXPECT_THAT(captions, Contains(QString(node.node().child_value()).simplified().toStdString()))
                << page.toStdString();
            ++count;
        }
    }
    EXPECT_GT(count, 50);
}

TEST_F(HelpTest, LiesWhereTheProgramOpensIt)
{
    const ShellRecorder shell;
    const String previous = SetProgramFolder(FromUtf8(TESSARINE_PROGRAM_FOLDER));

    ShowHelp();

    SetProgramFolder(previous);
    ASSERT_THAT(shell.Opened(), testing::ElementsAre(FromQt(PathOf("index.html"))));
    EXPECT_TRUE(QFile::exists(ToQt(shell.Opened().front())));
}

}  // namespace
}  // namespace tessarine
