#include "shell/FileAssociationKeys.h"

#include "platform/AnsiText.h"

namespace tessarine
{

namespace
{

constexpr REGSAM access = 63;

std::string Ascii(const String& name)
{
    return ToAnsi(name).value_or("");
}

LSTATUS SetText(HKEY key, const String& name, const String& text)
{
    if (const auto bytes = ToAnsi(text))
        return RegSetValueExA(key, Ascii(name).c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(bytes->c_str()),
                              static_cast<DWORD>(bytes->size() + 1));
    return RegSetValueExW(key, std::wstring(name.begin(), name.end()).c_str(), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(text.c_str()),
                          static_cast<DWORD>((text.size() + 1) * sizeof(char16_t)));
}

}  // namespace

void CreateNewKey(const String& SubKey, HKEY Root)
{
    HKEY key = nullptr;
    RegCreateKeyExA(Root, Ascii(SubKey).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr, &key, nullptr);
    RegCloseKey(key);
}

void SetKeyValue(const String& SubKey, const String& ValueName, const KeyValue& Value, std::int32_t ValueType)
{
    HKEY key = nullptr;
    RegOpenKeyExA(HKEY_CLASSES_ROOT, Ascii(SubKey).c_str(), 0, access, &key);
    SetValueEx(key, ValueName, ValueType, Value);
    RegCloseKey(key);
}

std::int32_t SetValueEx(HKEY Key, const String& ValueName, std::int32_t ValueType, const KeyValue& Value)
{
    if (const auto* text = std::get_if<String>(&Value); text != nullptr && ValueType == REG_SZ)
        return SetText(Key, ValueName, *text);
    if (const auto* number = std::get_if<std::int32_t>(&Value); number != nullptr && ValueType == REG_DWORD)
        return RegSetValueExA(Key, Ascii(ValueName).c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(number),
                              sizeof *number);
    return 0;
}

}  // namespace tessarine
