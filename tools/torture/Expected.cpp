#include "Expected.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <utility>

#include "Program.h"
#include "support/PackageCompare.h"
#include "support/PackageReader.h"
#include "support/TemporaryFolder.h"

namespace tessarine::torture
{

namespace
{

Outcome RunAside(const TemporaryFolder& folder, const std::vector<std::string>& arguments)
{
    const Path path = ToUtf8(folder.Path());
    Round aside(path, 0, 0);
    Call call;
    call.arguments = arguments;
    call.dataFolder = path / "data";
    return Run(aside, call);
}

bool Mentions(const String& text, const String& what)
{
    return text.find(what) != String::npos;
}

/// Raises when the result is not the deck with all texts replaced and nothing else.
void MakeSure(const std::string& before, const std::string& after)
{
    const test::PackageReader old(before);
    const test::PackageReader replaced(after);
    const std::vector<test::Replacement> pairs{{FromUtf8(findText), FromUtf8(replaceText)}};
    const auto packaging = test::PackagingDifferences(old, replaced);
    const auto content = test::UnexpectedDifferences(old, replaced, pairs);
    // Headers, sizes and packed bytes of parts without a hit are compared; a part with hits may differ in its text.
    if (!packaging.empty() || !content.empty())
        throw std::runtime_error("an undisturbed run changed more than the text: " +
                                 (packaging.empty() ? content : packaging).front().reason);
    const auto slides = static_cast<int>(replaced.SlideParts().size());
    for (int slide = 1; slide <= slides; ++slide) {
        auto texts = test::TextsOf(replaced, slide);
        const auto notes = test::NotesOf(replaced, slide);
        texts.insert(texts.end(), notes.begin(), notes.end());
        if (std::ranges::any_of(texts, [](const String& text) { return Mentions(text, FromUtf8(findText)); }))
            throw std::runtime_error("an undisturbed run left a text that was to be replaced");
    }
}

}  // namespace

const std::string& ReplacedBytes(const std::string& name, const std::string& bytes)
{
    static std::map<std::pair<std::string, std::string>, std::string> known;
    const auto key = std::pair(Path(name).extension().string(), bytes);
    if (const auto found = known.find(key); found != known.end())
        return found->second;
    const TemporaryFolder folder;
    const String deck = folder.Write(FromUtf8("deck" + key.first), bytes);
    const Outcome outcome = RunAside(folder, {"replace", "--find", findText, "--with", replaceText, ToUtf8(deck)});
    if (outcome.status != 0)
        throw std::runtime_error("an undisturbed run failed: " + outcome.Text());
    std::string after = ContentOf(deck);
    MakeSure(bytes, after);
    // What other rounds wrote needs no keeping for ever.
    if (known.size() > 500)
        known.clear();
    return known[key] = std::move(after);
}

std::string Describe(const std::string& bytes)
{
    if (bytes.empty())
        return "an empty file";
    try {
        const test::PackageReader package(bytes);
        const auto faults = test::ValidityFaults(package);
        return faults.empty() ? "an intact package with other content" : "a package with faults: " + faults.front();
    } catch (const std::exception& error) {
        return std::to_string(bytes.size()) + " bytes that are no intact package: " + error.what();
    }
}

bool HasOption(const std::string& command, const std::string& option)
{
    static std::map<std::string, std::string> helps;
    if (!helps.contains(command)) {
        const TemporaryFolder folder;
        helps[command] = RunAside(folder, {command, "--help"}).output;
    }
    return helps[command].find(option) != std::string::npos;
}

}  // namespace tessarine::torture
