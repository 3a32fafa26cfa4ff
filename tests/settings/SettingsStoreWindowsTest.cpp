#include "settings/SettingsStore.h"

#include <gtest/gtest.h>

#include "support/qt/TestKey.h"
#include "support/qt/UserFolders.h"

namespace tessarine
{
namespace
{

class SettingsKeyTest : public testing::Test
{
protected:
    UserFolders user_;
};

/// A text as the registry keeps it.
StoredValue Text(std::u16string_view text)
{
    std::string bytes;
    for (const char16_t unit : std::u16string(text) + u'\0') {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return {REG_SZ, bytes};
}

TEST_F(SettingsKeyTest, IsNotMadeByReading)
{
    GetSetting(u"App", u"Section", u"Key");

    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"Software", 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
}

TEST_F(SettingsKeyTest, HoldsTheTextUnderItsNameAtOnce)
{
    SaveSetting(u"App", u"MRUFiles", u"0", u"C:\\Übung\\報告.tsq");

    EXPECT_EQ(StoredIn(HKEY_CURRENT_USER, L"Software\\Tessarine\\App\\MRUFiles", L"0"), Text(u"C:\\Übung\\報告.tsq"));
}

TEST_F(SettingsKeyTest, IsReadAnewEachTime)
{
    SaveSetting(u"App", u"Section", u"0", u"mine");

    const std::wstring theirs = L"theirs, and longer";
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Tessarine\\App\\Section", L"0", REG_SZ, theirs.c_str(),
                    static_cast<DWORD>((theirs.size() + 1) * sizeof(wchar_t)));

    EXPECT_EQ(GetSetting(u"App", u"Section", u"0"), u"theirs, and longer");
}

TEST_F(SettingsKeyTest, GivesTheEmptyTextForAValueOfAnotherType)
{
    const DWORD number = 7;
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Tessarine\\App\\Section", L"0", REG_DWORD, &number, sizeof number);

    EXPECT_EQ(GetSetting(u"App", u"Section", u"0"), u"");
}

TEST_F(SettingsKeyTest, ReadsATextWithoutAnEnd)
{
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Tessarine\\App\\Section", L"0", REG_SZ, L"ab", 4);
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Tessarine\\App\\Section", L"1", REG_SZ, L"", 0);

    EXPECT_EQ(GetSetting(u"App", u"Section", u"0"), u"ab");
    EXPECT_EQ(GetSetting(u"App", u"Section", u"1"), u"");
}

}  // namespace
}  // namespace tessarine
