#pragma once

#include <map>
#include <string>
#include <vector>

namespace tessarine::test
{

/// A language file as its lines say, read independently of the program's own reader. Texts are UTF-8.
class LanguageFile
{
public:
    struct Line {
        std::string section;
        std::string key;
        std::string value;  ///< Without the double quotes around it.
    };

    explicit LanguageFile(const std::string& bytes);

    const std::vector<Line>& Lines() const { return lines_; }

    /// Lines that are neither empty, a comment, a section nor a key with a value.
    const std::vector<std::string>& OddLines() const { return oddLines_; }

    /// "section/key" in small letters, as both compare without regard to case.
    static std::string NameOf(const std::string& section, const std::string& key);

    /// The value of the first line of that name; fails the test when there is none.
    std::string Value(const std::string& section, const std::string& key) const;

private:
    std::vector<Line> lines_;
    std::vector<std::string> oddLines_;
    std::map<std::string, std::string> values_;
};

}  // namespace tessarine::test
