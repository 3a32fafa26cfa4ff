#include "files/ProfileText.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "files/Files.h"
#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

namespace
{

/// The value as the system's own call reads it.
std::string SystemsValue(const String& path, const char* section, const char* key)
{
    std::array<char, 256> value{};
    GetPrivateProfileStringA(section, key, "", value.data(), static_cast<DWORD>(value.size()), ToUtf8(path).c_str());
    return value.data();
}

class ProfileOfWindows : public testing::TestWithParam<const char*>
{
protected:
    const TemporaryFolder folder_;
};

}  // namespace

TEST_P(ProfileOfWindows, IsReadAsTheSystemReadsIt)
{
    const std::string content = GetParam();
    const String path = folder_.Write(u"a.lng", content);

    for (const char* section : {"section", "Global Msg", "other", "missing"})
        for (const char* key : {"key", "1028", "caption", "missing"})
            EXPECT_EQ(ToUtf8(ReadProfileValue(path, FromUtf8(section), FromUtf8(key), 255)),
                      SystemsValue(path, section, key))
                << "[" << section << "] " << key;
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ProfileOfWindows,
    testing::Values("[section]\r\nkey=value\r\n", "[section]\nkey = value with blanks \n", "[SECTION]\r\nKEY=upper\r\n",
                    "[section]\r\nkey=\"quoted \"\r\n", "[section]\r\nkey='single'\r\n", "[section]\r\nkey=\"\r\n",
                    "[section]\r\nkey=\r\n", "[section]\r\n; key=comment\r\nkey=a;b\r\n",
                    "[section]\r\nkey=one\r\nkey=two\r\n", "[section]\r\nother=1\r\n[section]\r\nkey=second\r\n",
                    "[global msg]\r\n1028=Text\r\n[other]\r\n1028=Other\r\n", "key=above\r\n[section]\r\nkey=below\r\n",
                    "  [section]  \r\n\tkey\t=\tvalue\t\r\n", "[section]\r\nkey=a=b=c\r\n", "[section]\r\nkey\r\n",
                    "[section]\r\n\r\n\r\nkey=after blank lines", "[section]\r\nkey=\xC3\xBC\r\n", ""));

}  // namespace tessarine
