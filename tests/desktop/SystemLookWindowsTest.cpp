#include "desktop/SystemLook.h"

#include <gtest/gtest.h>

#include <optional>

#include <QApplication>
#include <QStyle>

#include "platform/WindowsHeaders.h"

namespace tessarine
{
namespace
{

constexpr const wchar_t* key = L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
constexpr const wchar_t* name = L"AppsUseLightTheme";

/// The user's choice of a light or dark desktop, as it was before each test afterwards.
class SystemLookTest : public testing::Test
{
protected:
    SystemLookTest()
    {
        DWORD value = 0;
        DWORD size = sizeof value;
        if (RegGetValueW(HKEY_CURRENT_USER, key, name, RRF_RT_REG_DWORD, nullptr, &value, &size) == ERROR_SUCCESS)
            before_ = value;
    }
    ~SystemLookTest() override
    {
        before_ ? Choose(*before_) : Forget();
        ApplySystemLook();
        QApplication::setPalette(colours_);
    }

    static void Choose(DWORD isLight)
    {
        RegSetKeyValueW(HKEY_CURRENT_USER, key, name, REG_DWORD, &isLight, sizeof isLight);
    }
    static void Forget() { RegDeleteKeyValueW(HKEY_CURRENT_USER, key, name); }

    static bool AreColoursDark() { return QApplication::palette().color(QPalette::Window).lightness() < 128; }

private:
    std::optional<DWORD> before_;
    const QPalette colours_ = QApplication::palette();
};

TEST_F(SystemLookTest, IsDarkOnADarkDesktop)
{
    Choose(0);

    ApplySystemLook();

    EXPECT_TRUE(AreColoursDark());
}

TEST_F(SystemLookTest, IsThatOfTheDesktopOtherwise)
{
    Choose(1);
    ApplySystemLook();
    EXPECT_FALSE(AreColoursDark());

    Forget();
    ApplySystemLook();
    EXPECT_FALSE(AreColoursDark());
}

}  // namespace
}  // namespace tessarine
