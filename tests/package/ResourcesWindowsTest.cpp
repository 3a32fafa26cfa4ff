#include <gmock/gmock.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/WindowsHeaders.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

struct Program {
    std::wstring path;
    std::wstring description;
};

void PrintTo(const Program& program, std::ostream* stream)
{
    for (const wchar_t unit : program.path)
        *stream << static_cast<char>(unit);
}

/// A program's resources as Windows reads them, from the file, which is not run.
class ResourcesOfProgram : public testing::TestWithParam<Program>
{
protected:
    void SetUp() override
    {
        module_ =
            LoadLibraryExW(GetParam().path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
        ASSERT_NE(module_, nullptr) << "error " << GetLastError();
    }

    ~ResourcesOfProgram() override
    {
        if (module_ != nullptr)
            FreeLibrary(module_);
    }

    std::span<const std::byte> Resource(LPCWSTR type, WORD number) const
    {
        HRSRC const found = FindResourceW(module_, MAKEINTRESOURCEW(number), type);
        if (found == nullptr)
            return {};
        const void* const data = LockResource(LoadResource(module_, found));
        return {static_cast<const std::byte*>(data), SizeofResource(module_, found)};
    }

    /// The numbers of all resources of a type, in the order in which Windows keeps them.
    std::vector<std::uintptr_t> NumbersOf(LPCWSTR type) const
    {
        std::vector<std::uintptr_t> numbers;
        const auto take = [](HMODULE, LPCWSTR, LPWSTR name, LONG_PTR taken) -> BOOL {
            reinterpret_cast<std::vector<std::uintptr_t>*>(taken)->push_back(reinterpret_cast<std::uintptr_t>(name));
            return TRUE;
        };
        EnumResourceNamesW(module_, type, take, reinterpret_cast<LONG_PTR>(&numbers));
        return numbers;
    }

    /// A text of the version, in the language and code page that the version names.
    std::wstring VersionText(const std::wstring& name) const
    {
        void* value = nullptr;
        UINT length = 0;
        if (!VerQueryValueW(Version().data(), (L"\\StringFileInfo\\040904b0\\" + name).c_str(), &value, &length))
            return L"(none)";
        return static_cast<const wchar_t*>(value);
    }

    const std::vector<std::byte>& Version() const
    {
        if (version_.empty()) {
            DWORD unused = 0;
            version_.resize(GetFileVersionInfoSizeW(GetParam().path.c_str(), &unused) + 1);
            GetFileVersionInfoW(GetParam().path.c_str(), 0, static_cast<DWORD>(version_.size()), version_.data());
        }
        return version_;
    }

private:
    HMODULE module_ = nullptr;
    mutable std::vector<std::byte> version_;
};

std::wstring Wide(const char* ascii)
{
    return {ascii, ascii + std::strlen(ascii)};
}

template <class Number>
Number NumberAt(std::span<const std::byte> bytes, std::size_t position)
{
    Number number{};
    std::memcpy(&number, bytes.subspan(position, sizeof number).data(), sizeof number);
    return number;
}

TEST_P(ResourcesOfProgram, HaveTheIconThatTheFileTypeNamesAndNoOther)
{
    EXPECT_THAT(NumbersOf(RT_GROUP_ICON), ElementsAre(30001));
}

TEST_P(ResourcesOfProgram, HaveAPictureForEachSizeOfTheIcon)
{
    constexpr std::size_t header = 6;
    constexpr std::size_t entry = 14;
    constexpr std::uint32_t beginOfPng = 0x474E5089;
    const std::span<const std::byte> group = Resource(RT_GROUP_ICON, 30001);
    ASSERT_GE(group.size(), header);

    std::vector<int> sizes;
    std::vector<int> packed;
    for (std::size_t at = header; at + entry <= group.size(); at += entry) {
        const int size = NumberAt<std::uint8_t>(group, at) == 0 ? 256 : NumberAt<std::uint8_t>(group, at);
        sizes.push_back(size);
        const std::span<const std::byte> picture = Resource(RT_ICON, NumberAt<std::uint16_t>(group, at + 12));
        ASSERT_EQ(picture.size(), NumberAt<std::uint32_t>(group, at + 8)) << size;
        if (NumberAt<std::uint32_t>(picture, 0) == beginOfPng)
            packed.push_back(size);
    }

    EXPECT_THAT(sizes, ElementsAre(16, 20, 24, 32, 40, 48, 64, 256));
    EXPECT_THAT(packed, ElementsAre(256));
}

TEST_P(ResourcesOfProgram, HaveAnIconThatWindowsCanLoad)
{
    HICON icon = nullptr;
    ASSERT_EQ(PrivateExtractIconsW(GetParam().path.c_str(), 0, 48, 48, &icon, nullptr, 1, 0), 1u);

    ICONINFO info{};
    BITMAP colours{};
    ASSERT_TRUE(GetIconInfo(icon, &info));
    EXPECT_NE(GetObjectW(info.hbmColor, sizeof colours, &colours), 0);
    EXPECT_EQ(colours.bmWidth, 48);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    DestroyIcon(icon);
}

TEST_P(ResourcesOfProgram, HaveTheVersionAndTheNamesOfTheProgram)
{
    const std::wstring version = Wide(TESSARINE_VERSION);

    EXPECT_EQ(VersionText(L"FileVersion"), version);
    EXPECT_EQ(VersionText(L"ProductVersion"), version);
    EXPECT_EQ(VersionText(L"CompanyName"), L"Tessarine");
    EXPECT_EQ(VersionText(L"ProductName"), L"Tessarine");
    EXPECT_EQ(VersionText(L"FileDescription"), GetParam().description);
    EXPECT_EQ(VersionText(L"OriginalFilename"), GetParam().path.substr(GetParam().path.find_last_of(L"/\\") + 1));
    EXPECT_THAT(VersionText(L"LegalCopyright"), HasSubstr(L"Copyright (c)"));
}

TEST_P(ResourcesOfProgram, HaveTheVersionInNumbers)
{
    void* value = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(Version().data(), L"\\", &value, &length));
    const auto* const numbers = static_cast<const VS_FIXEDFILEINFO*>(value);

    const std::wstring text = std::to_wstring(HIWORD(numbers->dwFileVersionMS)) + L"." +
                              std::to_wstring(LOWORD(numbers->dwFileVersionMS)) + L"." +
                              std::to_wstring(HIWORD(numbers->dwFileVersionLS));
    EXPECT_EQ(text, Wide(TESSARINE_VERSION));
    EXPECT_EQ(numbers->dwFileVersionMS, numbers->dwProductVersionMS);
    EXPECT_EQ(numbers->dwFileVersionLS, numbers->dwProductVersionLS);
}

TEST_P(ResourcesOfProgram, HaveAManifestForLongPathsAndEachScreensResolution)
{
    const std::span<const std::byte> bytes = Resource(RT_MANIFEST, 1);
    const std::string manifest(reinterpret_cast<const char*>(bytes.data()), bytes.size());

    EXPECT_THAT(manifest, HasSubstr(">true</longPathAware>"));
    EXPECT_THAT(manifest, HasSubstr(">PerMonitorV2</dpiAwareness>"));
    EXPECT_THAT(manifest, HasSubstr("Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""));
    EXPECT_THAT(manifest, HasSubstr("{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"));
    EXPECT_THAT(manifest, HasSubstr("level=\"asInvoker\""));
    EXPECT_THAT(manifest, Not(HasSubstr("<activeCodePage")));
}

/// Windows heeds a manifest only when it understands all of it.
TEST_P(ResourcesOfProgram, HaveAManifestThatWindowsTakes)
{
    ACTCTXW request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
    request.lpSource = GetParam().path.c_str();
    request.lpResourceName = MAKEINTRESOURCEW(1);
    HANDLE const context = CreateActCtxW(&request);

    ASSERT_NE(context, INVALID_HANDLE_VALUE) << "error " << GetLastError();
    ReleaseActCtx(context);
}

std::vector<Program> Programs()
{
    std::vector<Program> programs = {{Wide(TESSARINE_BATCH), L"Tessarine batch program"}};
#ifdef TESSARINE_PROGRAM
    programs.push_back({Wide(TESSARINE_PROGRAM), L"Tessarine"});
#endif
    return programs;
}

INSTANTIATE_TEST_SUITE_P(Programs, ResourcesOfProgram, testing::ValuesIn(Programs()));

}  // namespace
}  // namespace tessarine
