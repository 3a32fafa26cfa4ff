#include "platform/UnicodeTables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/CaseFolding.h"

namespace tessarine
{

namespace
{

/// The database, read here once more, without the tables' generator: a field of a line is found by counting semicolons.
class Lines
{
public:
    explicit Lines(const std::string& name) : file_(TESSARINE_UNICODE_DATA "/" + name) {}

    bool Next()
    {
        while (std::getline(file_, line_))
            if (!line_.empty() && line_[0] != '#')
                return true;
        return false;
    }

    std::string Field(int number) const
    {
        std::size_t at = 0;
        for (; number > 0; --number)
            at = line_.find(';', at) + 1;
        at = line_.find_first_not_of(' ', at);
        return line_.substr(at, line_.find(';', at) - at);
    }

    char32_t CodePoint(int field) const { return static_cast<char32_t>(std::stoul(Field(field), nullptr, 16)); }

private:
    std::ifstream file_;
    std::string line_;
};

constexpr char32_t afterLast = 0x110000;

char32_t Mapped(const CaseMapping& mapping, char32_t codePoint)
{
    return codePoint < 0x10000 ? mapping(static_cast<char16_t>(codePoint)) : mapping.OfPair(codePoint);
}

/// Every character is mapped as the database says, and all that it says nothing of stay.
void ExpectMapping(const CaseMapping& mapping, const std::map<char32_t, char32_t>& expected)
{
    ASSERT_GT(expected.size(), 1400u);
    std::vector<std::uint32_t> different;
    auto known = expected.begin();
    for (char32_t codePoint = 0; codePoint < afterLast; ++codePoint) {
        const bool isKnown = known != expected.end() && known->first == codePoint;
        if (Mapped(mapping, codePoint) != (isKnown ? known++->second : codePoint))
            different.push_back(codePoint);
    }
    EXPECT_THAT(different, testing::IsEmpty());
}

}  // namespace

TEST(UnicodeTables, FoldAsTheDatabaseSays)
{
    std::map<char32_t, char32_t> expected;
    for (Lines lines("CaseFolding.txt"); lines.Next();)
        if (lines.Field(1) == "C" || lines.Field(1) == "S")
            expected[lines.CodePoint(0)] = lines.CodePoint(2);

    ExpectMapping(simpleFolding, expected);
}

TEST(UnicodeTables, RaiseAsTheDatabaseSays)
{
    std::map<char32_t, char32_t> expected;
    for (Lines lines("UnicodeData.txt"); lines.Next();)
        if (!lines.Field(12).empty())
            expected[lines.CodePoint(0)] = lines.CodePoint(12);

    ExpectMapping(simpleUpperCase, expected);
}

TEST(UnicodeTables, KnowLettersMarksAndDigitsOfTheDatabase)
{
    const std::set<std::string> word = {"Lu", "Ll", "Lt", "Lm", "Lo", "Mn", "Mc", "Me", "Nd"};
    std::vector<bool> expected(afterLast);
    expected[U'_'] = true;
    char32_t first = 0;
    for (Lines lines("UnicodeData.txt"); lines.Next();) {
        // Two lines stand for a whole range.
        const bool isEndOfRange = lines.Field(1).ends_with(" Last>");
        for (char32_t at = isEndOfRange ? first : lines.CodePoint(0); at <= lines.CodePoint(0); ++at)
            expected[at] = word.contains(lines.Field(2)) || at == U'_';
        first = lines.CodePoint(0);
    }

    std::vector<std::uint32_t> different;
    for (char32_t codePoint = 0; codePoint < afterLast; ++codePoint)
        if (IsWordCharacter(codePoint) != expected[codePoint])
            different.push_back(codePoint);
    EXPECT_THAT(different, testing::IsEmpty());
}

}  // namespace tessarine
