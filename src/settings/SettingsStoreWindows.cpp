#include "settings/SettingsStore.h"

#include <algorithm>

#include "platform/Failure.h"
#include "platform/ProgramInfo.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

namespace
{

/// A name or path as the system takes it.
std::wstring Wide(StringView text)
{
    return {text.begin(), text.end()};
}

std::wstring KeyOf(const String& application, const String& section)
{
    return Wide(u"Software\\" + String(CompanyName) + u'\\' + application + u'\\' + section);
}

}  // namespace

String GetSetting(const String& application, const String& section, const String& key)
{
    const std::wstring path = KeyOf(application, section);
    const std::wstring name = Wide(key);
    DWORD size = 0;
    const auto get = [&](void* value) {
        return RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, value, &size);
    };
    if (get(nullptr) != ERROR_SUCCESS)
        return {};
    std::wstring value(size / sizeof(wchar_t), L'\0');
    // One that another process has made longer since is read as none.
    if (get(value.data()) != ERROR_SUCCESS)
        return {};
    value.resize(std::min(value.find(L'\0'), value.size()));
    return {value.begin(), value.end()};
}

void SaveSetting(const String& application, const String& section, const String& key, const String& value)
{
    const std::wstring path = KeyOf(application, section);
    // Both calls in one, and at once.
    const LSTATUS result = RegSetKeyValueW(HKEY_CURRENT_USER, path.c_str(), Wide(key).c_str(), REG_SZ, value.c_str(),
                                           static_cast<DWORD>((value.size() + 1) * sizeof(char16_t)));
    if (result != ERROR_SUCCESS)
        throw Failure(FailureNumber::PermissionDenied,
                      u"Permission denied: could not write the settings to HKEY_CURRENT_USER\\" +
                          String(path.begin(), path.end()));
}

}  // namespace tessarine
