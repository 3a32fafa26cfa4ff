#pragma once

#include <optional>
#include <string>

#include "platform/WindowsHeaders.h"

/// The registry for tests on Windows; for files that end in "Windows.cpp" or "WindowsTest.cpp".
namespace tessarine
{

/// A new key below the user's own, of a name that no other process uses, that takes the place of a root of the registry
/// for this process while it lives, and goes away with all it holds.
class TestKey
{
public:
    enum class Kind { Writable, Blocked };  ///< In a blocked one no key can be made that lasts.

    explicit TestKey(HKEY root, Kind kind = Kind::Writable);
    ~TestKey();
    TestKey(const TestKey&) = delete;
    TestKey& operator=(const TestKey&) = delete;

    /// Makes a key in it, which must not be there, as a blocked one.
    void Block(const std::wstring& path) const;

private:
    HKEY root_;
    std::wstring path_;  // below the user's own key
};

/// A value as it stands in the registry.
struct StoredValue {
    DWORD type = 0;
    std::string bytes;

    bool operator==(const StoredValue&) const = default;
};

/// Nothing when there is no such key or value.
std::optional<StoredValue> StoredIn(HKEY root, const std::wstring& path, const std::wstring& name);

}  // namespace tessarine
