#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "batch/program/Program.h"
#include "support/Deck.h"

namespace tessarine::test
{
namespace
{

struct Example {
    std::vector<std::string> arguments;
    std::string output;
};

/// The folder in which the page says its examples run.
constexpr std::string_view documentedFolder = "/srv/jobs";

std::string WithFolder(std::string text, const std::string& folder)
{
    for (std::size_t at = 0; (at = text.find(documentedFolder, at)) != std::string::npos; at += folder.size())
        text.replace(at, documentedFolder.size(), folder);
    return text;
}

/// The blocks of the page that begin with "$ tessarine-batch": the call, and what it prints.
std::vector<Example> ExamplesOf(const std::string& page)
{
    std::ifstream file(page);
    std::vector<Example> examples;
    bool inside = false;
    for (std::string line; std::getline(file, line);) {
        constexpr std::string_view prompt = "$ tessarine-batch ";
        if (line.starts_with(prompt)) {
            std::istringstream words(line.substr(prompt.size()));
            examples.emplace_back();
            for (std::string word; words >> word;)
                examples.back().arguments.push_back(word);
            inside = true;
        } else if (line.starts_with("```")) {
            inside = false;
        } else if (inside) {
            examples.back().output += line + "\n";
        }
    }
    return examples;
}

/// The files that the page about lists shows: a list, plain pairs, and these as JSON.
std::vector<std::string> FilesOfTheListPage()
{
    std::ifstream file(TESSARINE_LIST_PAGE);
    std::vector<std::string> files;
    bool inside = false;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("```")) {
            inside = !inside;
            if (inside)
                files.emplace_back();
        } else if (inside) {
            files.back() += line + "\n";
        }
    }
    return files;
}

TEST(DocumentedCommandsTest, PrintWhatThePageShows)
{
    Program program;
    program.folder.Write(u"decks/a.pptx",
                         Deck()
                             .Slide(Title(u"Fabrikam in 2023"), TextBox(u"About Fabrikam"), NotesPage(u"Ask Fabrikam"))
                             .Slide(Title(u"Fabrikam again"))
                             .Bytes());
    program.folder.Write(u"decks/b.pptx", Deck().Slide(Title(u"Nothing of the kind")).Bytes());

    const std::vector<std::string> files = FilesOfTheListPage();
    ASSERT_EQ(files.size(), 3u);
    program.folder.Write(u"pairs.csv", files[0]);
    program.folder.Write(u"names.csv", files[1]);
    program.folder.Write(u"names.json", files[2]);

    const auto examples = ExamplesOf(TESSARINE_BATCH_PAGE);

    EXPECT_EQ(examples.size(), 12u);
    for (const Example& example : examples) {
        const Outcome outcome = program.Run(example.arguments);
        EXPECT_EQ(outcome.output, WithFolder(example.output, ToUtf8(program.folder.Path())));
        EXPECT_EQ(outcome.error, "");
        EXPECT_EQ(outcome.status, 0);
    }

    EXPECT_EQ(program.Run({"list", "convert", "names.csv", "of-csv.json"}).status, 0);
    EXPECT_EQ(program.Run({"list", "convert", "names.json", "of-json.json"}).status, 0);
    EXPECT_EQ(ContentOf(program.folder.PathOf(u"of-json.json")), ContentOf(program.folder.PathOf(u"of-csv.json")));
}

}  // namespace
}  // namespace tessarine::test
