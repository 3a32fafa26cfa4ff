#include "platform/Crc32.h"

#include <gtest/gtest.h>

#include <string>

namespace tessarine
{
namespace
{

std::uint32_t Of(std::string_view text)
{
    return Crc32(std::as_bytes(std::span(text)));
}

TEST(Crc32, HasTheKnownValues)
{
    EXPECT_EQ(Of(""), 0u);
    EXPECT_EQ(Of("a"), 0xE8B7BE43u);
    EXPECT_EQ(Of("123456789"), 0xCBF43926u);
    EXPECT_EQ(Of("The quick brown fox jumps over the lazy dog"), 0x414FA339u);
}

TEST(Crc32, OfEveryLengthIsThatOfSingleSteps)
{
    std::string text;
    for (int length = 0; length < 40; ++length) {
        std::uint32_t rest = 0xFFFFFFFF;
        for (const char byte : text) {
            rest ^= static_cast<std::uint8_t>(byte);
            for (int bit = 0; bit < 8; ++bit)
                rest = (rest & 1) != 0 ? rest >> 1 ^ 0xEDB88320u : rest >> 1;
        }

        EXPECT_EQ(Of(text), ~rest) << length;
        text += static_cast<char>(length * 37 + 200);
    }
}

TEST(Crc32, OfPiecesIsThatOfTheWhole)
{
    const std::string_view text = "The quick brown fox jumps over the lazy dog";
    for (std::size_t at = 0; at <= text.size(); ++at)
        EXPECT_EQ(Crc32(std::as_bytes(std::span(text.substr(at))), Of(text.substr(0, at))), 0x414FA339u) << at;
}

}  // namespace
}  // namespace tessarine
