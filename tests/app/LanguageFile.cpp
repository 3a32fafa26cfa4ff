#include "app/LanguageFile.h"

#include <gtest/gtest.h>

#include <cctype>
#include <regex>
#include <sstream>

namespace tessarine::test
{

LanguageFile::LanguageFile(const std::string& bytes)
{
    static const std::regex sectionLine(R"(\[([^\]]+)\])");
    static const std::regex valueLine(R"re(([^=;\[ ][^= ]*)=(?:"(.*)"|([^ "].*[^ "]|[^ "])?))re");
    std::istringstream stream(bytes);
    std::string section;
    for (std::string line; std::getline(stream, line);) {
        std::smatch match;
        if (line.empty() || line.front() == ';')
            continue;
        if (std::regex_match(line, match, sectionLine)) {
            section = match[1];
        } else if (std::regex_match(line, match, valueLine)) {
            const std::string value = match[2].matched ? match[2].str() : match[3].str();
            lines_.push_back({section, match[1], value});
            values_.emplace(NameOf(section, match[1]), value);
        } else {
            oddLines_.push_back(line);
        }
    }
}

std::string LanguageFile::NameOf(const std::string& section, const std::string& key)
{
    std::string name = section + "/" + key;
    for (char& letter : name)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return name;
}

std::string LanguageFile::Value(const std::string& section, const std::string& key) const
{
    const auto found = values_.find(NameOf(section, key));
    if (found == values_.end()) {
        ADD_FAILURE() << "no line for " << section << " " << key;
        return {};
    }
    return found->second;
}

}  // namespace tessarine::test
