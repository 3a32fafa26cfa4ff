#include "shell/GetFolder.h"

#include <gmock/gmock.h>

#include <array>
#include <memory>
#include <vector>

#include "platform/AnsiText.h"
#include "platform/NativePath.h"
#include "platform/SpecialFolders.h"
#include "shell/BrowseFolder.h"
#include "support/ErrorLogRecorder.h"
#include "support/ScopedEnvironment.h"
#include "support/TemporaryFolder.h"

// After the system's own, which it builds on.
#include <commctrl.h>

namespace tessarine
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

/// An item list for a path.
using Item = std::unique_ptr<ITEMIDLIST, decltype(&CoTaskMemFree)>;

Item ItemOf(const String& path)
{
    const std::wstring wide(path.begin(), path.end());
    return {ILCreateFromPathW(wide.c_str()), &CoTaskMemFree};
}

/// A window in the dialog's place, which records what the callback sends.
class BrowseCallbackTest : public testing::Test
{
protected:
    struct Sent {
        UINT message;
        WPARAM number;
        std::string text;

        bool operator==(const Sent&) const = default;
    };

    BrowseCallbackTest()
    {
        window_ = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
        SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&sent_));
        SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Record));
    }
    ~BrowseCallbackTest() override
    {
        DestroyWindow(window_);
        BrowseStartFolder.clear();
    }

    static LRESULT CALLBACK Record(HWND window, UINT message, WPARAM number, LPARAM text)
    {
        if (message < WM_USER)
            return DefWindowProcW(window, message, number, text);
        auto* const sent = reinterpret_cast<std::vector<Sent>*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        sent->push_back({message, number, reinterpret_cast<const char*>(text)});
        return 0;
    }

    int Call(UINT message, const void* parameter = nullptr) const
    {
        return BrowseCallbackProc(window_, message, reinterpret_cast<LPARAM>(parameter), 0);
    }

    HWND window_;
    std::vector<Sent> sent_;
};

TEST_F(BrowseCallbackTest, HasTheDialogSelectTheStartFolderWhenItIsReady)
{
    BrowseStartFolder = std::string("C:\\decks\0", 9);

    EXPECT_EQ(Call(1), 0);

    EXPECT_THAT(sent_, ElementsAre(Sent{0x466, 1, "C:\\decks"}));
}

TEST_F(BrowseCallbackTest, GivesTheDialogTheNewSelectionAsStatusText)
{
    const TemporaryFolder folder;
    const Item item = ItemOf(folder.MakeFolder(u"Übung"));

    EXPECT_EQ(Call(2, item.get()), 0);

    EXPECT_THAT(sent_, ElementsAre(Sent{0x464, 0, *ToAnsi(folder.PathOf(u"Übung"))}));
}

TEST_F(BrowseCallbackTest, PassesOverASelectionWithoutAPath)
{
    ITEMIDLIST* computer = nullptr;
    ASSERT_EQ(SHGetSpecialFolderLocation(nullptr, CSIDL_DRIVES, &computer), S_OK);

    EXPECT_EQ(Call(2, computer), 0);
    EXPECT_EQ(Call(2), 0);

    CoTaskMemFree(computer);
    EXPECT_THAT(sent_, IsEmpty());
}

TEST_F(BrowseCallbackTest, PassesOverOtherMessages)
{
    EXPECT_EQ(Call(3), 0);

    EXPECT_THAT(sent_, IsEmpty());
}

TEST(GetAddressofFunction, HandsTheAddressBack)
{
    EXPECT_EQ(GetAddressofFunction(BrowseCallbackProc), &BrowseCallbackProc);
}

/// The system's own dialog. A timer looks at it from within and presses a button.
class FolderDialogTest : public testing::Test
{
protected:
    FolderDialogTest() { folder_.MakeFolder(u"inner"); }

    /// What the dialog shows.
    struct Shown {
        bool hasNewStyle;
        std::vector<std::string> texts;
    };

    /// Runs `show` and presses a button of the dialog that it shows, once a folder of that name is selected in it; any
    /// is good for an empty name. Wine's dialog sometimes loses its way to a folder, and is then cancelled and shown
    /// again.
    template <class Show>
    static Shown Press(int button, const std::string& selected, Show show)
    {
        for (int attempt = 0; attempt < 8; ++attempt) {
            pressing_ = {button, selected, {}, 0};
            const UINT_PTR timer = SetTimer(nullptr, 0, 20, [](HWND, UINT, UINT_PTR, DWORD) { Look(); });
            show();
            KillTimer(nullptr, timer);
            if (pressing_.looks < mostLooks)
                return pressing_.shown;
        }
        ADD_FAILURE() << "not selected: " << selected;
        return {};
    }

    String Choose(int button, const String& start)
    {
        String chosen;
        const std::string selected = start.empty() ? "" : "inner";
        shown_ = Press(button, selected,
                       [&] { chosen = GetFolder(nullptr, start, u"Please select a folder:", false, false); });
        return chosen;
    }

    // Wine's dialog finds a folder only while no other on the way to it changes, as the temporary folder does all the
    // time; so this one lies with the user's data.
    const ScopedEnvironment elsewhere_{"TMP", ToUtf8(GetSpecialFolderPath(ApplicationDataFolderNumber))};
    const TemporaryFolder folder_;
    Shown shown_{};

private:
    static constexpr int mostLooks = 100;

    struct Pressing {
        int button;
        std::string selected;
        Shown shown;
        int looks;
    };
    static inline Pressing pressing_;

    static void Look()
    {
        HWND dialog = nullptr;
        EnumThreadWindows(GetCurrentThreadId(), &TakeDialog, reinterpret_cast<LPARAM>(&dialog));
        if (dialog == nullptr)
            return;
        const bool isReady = pressing_.selected.empty() || Selection(dialog) == pressing_.selected;
        if (!isReady && ++pressing_.looks < mostLooks)
            return;
        pressing_.shown = {(GetWindowLongPtrW(dialog, GWL_STYLE) & WS_THICKFRAME) != 0, {}};
        EnumChildWindows(dialog, &AddText, reinterpret_cast<LPARAM>(&pressing_.shown.texts));
        // A dialog that is still being set up takes no notice, and is told at the next look.
        PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(isReady ? pressing_.button : IDCANCEL), 0);
    }

    /// The name that is selected in the dialog's tree.
    static std::string Selection(HWND dialog)
    {
        HWND tree = nullptr;
        EnumChildWindows(dialog, &TakeTree, reinterpret_cast<LPARAM>(&tree));
        std::array<char, 256> name{};
        TVITEMA item{};
        item.mask = TVIF_TEXT;
        item.hItem = reinterpret_cast<HTREEITEM>(SendMessageA(tree, TVM_GETNEXTITEM, TVGN_CARET, 0));
        item.pszText = name.data();
        item.cchTextMax = static_cast<int>(name.size());
        SendMessageA(tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
        return item.pszText;
    }

    static bool IsA(HWND window, const std::wstring& expected)
    {
        std::array<wchar_t, 64> name{};
        GetClassNameW(window, name.data(), static_cast<int>(name.size()));
        return name.data() == expected;
    }

    static BOOL CALLBACK TakeTree(HWND control, LPARAM result)
    {
        if (IsA(control, L"SysTreeView32"))
            *reinterpret_cast<HWND*>(result) = control;
        return TRUE;
    }

    static BOOL CALLBACK TakeDialog(HWND window, LPARAM result)
    {
        if (!IsA(window, L"#32770") || !IsWindowVisible(window))
            return TRUE;
        *reinterpret_cast<HWND*>(result) = window;
        return FALSE;
    }

    static BOOL CALLBACK AddText(HWND control, LPARAM texts)
    {
        std::array<char, 512> text{};
        SendMessageA(control, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
        reinterpret_cast<std::vector<std::string>*>(texts)->push_back(text.data());
        return TRUE;
    }
};

TEST_F(FolderDialogTest, BeginsAtTheStartFolderAndGivesItBack)
{
    const String start = folder_.PathOf(u"inner");

    EXPECT_EQ(Choose(IDOK, start), start);

    EXPECT_THAT(shown_.texts, Contains("Please select a folder:"));
    EXPECT_THAT(shown_.texts, Contains(ToUtf8(start)));  // the status text
    EXPECT_EQ(BrowseStartFolder, ToUtf8(start) + '\0');
}

TEST_F(FolderDialogTest, GivesNothingWhenItIsCancelled)
{
    EXPECT_EQ(Choose(IDCANCEL, folder_.PathOf(u"inner")), u"");
}

TEST_F(FolderDialogTest, TakesAStartFolderWithASeparatorAtItsEnd)
{
    EXPECT_EQ(Choose(IDOK, folder_.PathOf(u"inner\\")), folder_.PathOf(u"inner"));
}

TEST_F(FolderDialogTest, BeginsAtItsDefaultPlaceWithoutAStartFolder)
{
    BrowseStartFolder = "as before";

    Choose(IDCANCEL, u"");

    EXPECT_EQ(BrowseStartFolder, "as before");
}

TEST_F(FolderDialogTest, CanBeResizedInTheNewStyle)
{
    const auto show = [](bool newStyle) { return [newStyle] { GetFolder(nullptr, u"", u"Pick", false, newStyle); }; };

    EXPECT_TRUE(Press(IDCANCEL, "", show(true)).hasNewStyle);
    EXPECT_FALSE(Press(IDCANCEL, "", show(false)).hasNewStyle);
}

TEST_F(FolderDialogTest, EndsInTheFolderWithASeparator)
{
    const ErrorLogRecorder log;
    String folder = folder_.PathOf(u"inner");

    bool isChosen = false;

    Press(IDOK, "inner", [&] { isChosen = BrowseFolder(nullptr, folder, u"Please select a folder:", false, true); });

    EXPECT_TRUE(isChosen);
    EXPECT_EQ(folder, folder_.PathOf(u"inner\\"));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

}  // namespace
}  // namespace tessarine
