#include "support/qt/TestKey.h"

#include <atomic>
#include <stdexcept>

namespace tessarine
{

namespace
{

const std::wstring testKeys = L"Software\\Tessarine Tests";

/// An open key.
class Key
{
public:
    explicit Key(HKEY key = nullptr) : key_(key) {}
    ~Key() { RegCloseKey(key_); }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;

    HKEY Get() const { return key_; }
    HKEY* Out() { return &key_; }

private:
    HKEY key_;
};

void Check(LSTATUS result, const char* what)
{
    if (result != ERROR_SUCCESS)
        throw std::runtime_error(std::string(what) + ": error " + std::to_string(result));
}

/// The user's own key, also while another one is in its place.
HKEY OpenUser()
{
    HKEY user = nullptr;
    Check(RegOpenCurrentUser(KEY_ALL_ACCESS, &user), "RegOpenCurrentUser");
    return user;
}

/// Below a key that doesn't outlive the system's next start none can be made that does.
void Make(HKEY parent, const std::wstring& path, TestKey::Kind kind, Key& key)
{
    const DWORD options = kind == TestKey::Kind::Blocked ? REG_OPTION_VOLATILE : REG_OPTION_NON_VOLATILE;
    DWORD disposition = 0;
    Check(RegCreateKeyExW(parent, path.c_str(), 0, nullptr, options, KEY_ALL_ACCESS, nullptr, key.Out(), &disposition),
          "RegCreateKeyExW");
    if (disposition != REG_CREATED_NEW_KEY)
        throw std::runtime_error("the key is there already");
}

}  // namespace

TestKey::TestKey(HKEY root, Kind kind) : root_(root)
{
    static std::atomic<int> count = 0;
    path_ = testKeys + L"\\" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
    const Key user(OpenUser());
    Key key;
    Make(user.Get(), path_, kind, key);
    Check(RegOverridePredefKey(root_, key.Get()), "RegOverridePredefKey");
}

TestKey::~TestKey()
{
    RegOverridePredefKey(root_, nullptr);
    const Key user(OpenUser());
    RegDeleteTreeW(user.Get(), path_.c_str());
    RegDeleteKeyW(user.Get(), testKeys.c_str());  // stays while another process has keys in it
}

void TestKey::Block(const std::wstring& path) const
{
    Key key;
    Make(root_, path, Kind::Blocked, key);
}

std::optional<StoredValue> StoredIn(HKEY root, const std::wstring& path, const std::wstring& name)
{
    Key key;
    StoredValue value;
    DWORD size = 0;
    if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, key.Out()) != ERROR_SUCCESS ||
        RegQueryValueExW(key.Get(), name.c_str(), nullptr, &value.type, nullptr, &size) != ERROR_SUCCESS)
        return std::nullopt;
    value.bytes.resize(size);
    Check(
        RegQueryValueExW(key.Get(), name.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(value.bytes.data()), &size),
        "RegQueryValueExW");
    return value;
}

}  // namespace tessarine
