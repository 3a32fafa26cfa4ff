#include "office/builtin/xml/XmlCharacters.h"

#include <array>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace tessarine::builtin
{
namespace
{

/// What CheckCharacters says when each character is looked at alone.
CharacterCheck CheckOneByOne(std::string_view xml, std::size_t from, Ampersands ampersands)
{
    CharacterCheck last{from};
    while (last.end < xml.size() && last.fault == nullptr)
        last = CheckCharacter(xml, last.end, ampersands);
    return last;
}

TEST(CheckCharacter, TellsTheCharactersOfXmlFromAllOthers)
{
    const auto isCharacter = [](const std::string& bytes) {
        const CharacterCheck checked = CheckCharacter(bytes, 0, Ampersands::BeginReferences);
        return checked.fault == nullptr && checked.end == bytes.size();
    };
    for (const char* const good :
         {"a", "\t", "\n", "\r", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
          "\xEF\xBF\xBD", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF", "&#9;"})
        EXPECT_TRUE(isCharacter(good)) << good;
    for (const char* const bad : {"\v", "\x1F", "\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC2", "\xC2\x41",
                                  "\xE0\x9F\xBF", "\xE1\x80", "\xED\xA0\x80", "\xEF\xBF\xBE", "\xEF\xBF\xBF",
                                  "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "&", "&#11;"})
        EXPECT_FALSE(isCharacter(bad)) << bad;
}

TEST(CheckCharacters, SaysOfAllLeadsWhatALookAtEachCharacterSays)
{
    constexpr auto seconds =
        std::to_array({'\x7F', '\x80', '\x8F', '\x90', '\x9F', '\xA0', '\xBE', '\xBF', '\xC0', 'a'});
    for (int lead = 1; lead < 0x100; ++lead) {
        for (const char second : seconds) {
            for (const char third : seconds) {
                // The last places are where a character reaches into the next block.
                for (const std::size_t place : {0u, 1u, 12u, 13u, 14u, 15u}) {
                    std::string xml(40, 'x');
                    xml[place] = static_cast<char>(lead);
                    xml[place + 1] = second;
                    xml[place + 2] = third;

                    const CharacterCheck checked = CheckCharacters(xml, 0, xml.size(), Ampersands::AreText);

                    const CharacterCheck expected = CheckOneByOne(xml, 0, Ampersands::AreText);
                    ASSERT_EQ(checked.end, expected.end) << lead << " at " << place;
                    ASSERT_STREQ(checked.fault, expected.fault) << lead << " at " << place;
                }
            }
        }
    }
}

TEST(CheckCharacters, SaysOfMixedTextWhatALookAtEachCharacterSays)
{
    constexpr auto pieces = std::to_array<std::string_view>(
        {"plain text of some length ", "x", "\xC3\xA4", "\xE7\x8C\xAB", "\xEF\xBC\x8C", "\xEF\xBF\xBD",
         "\xF0\x9F\x98\x80", "\xE0\xA4\xA8", "\n", "&amp;", "&#228;", "\xE7\x8C", "\x80", "\v", "&", "\xED\xA0\x80"});
    constexpr std::size_t good = 11;  // pieces
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        std::string xml;
        for (std::size_t count = random() % 40; count > 0; --count)
            xml += pieces[random() % good];
        if (round % 2 == 0)
            xml += pieces[good + random() % (pieces.size() - good)];
        xml += std::string(random() % 20, '.');
        const Ampersands ampersands = round % 3 == 0 ? Ampersands::AreText : Ampersands::BeginReferences;

        const CharacterCheck checked = CheckCharacters(xml, 0, xml.size(), ampersands);

        const CharacterCheck expected = CheckOneByOne(xml, 0, ampersands);
        ASSERT_EQ(checked.end, expected.end) << xml;
        ASSERT_STREQ(checked.fault, expected.fault) << xml;
    }
}

TEST(CheckCharacters, LooksNoFurtherThanItIsAsked)
{
    const std::string xml = std::string(30, 'x') + "\xC3\xA4\xE7\x8C\xAB" + std::string(30, 'x') + "\v";

    EXPECT_EQ(CheckCharacters(xml, 0, xml.size() - 1, Ampersands::AreText).fault, nullptr);
    EXPECT_NE(CheckCharacters(xml, 0, xml.size(), Ampersands::AreText).fault, nullptr);
    EXPECT_GE(CheckCharacters(xml, 0, 31, Ampersands::AreText).end, 32u);
}

}  // namespace
}  // namespace tessarine::builtin
