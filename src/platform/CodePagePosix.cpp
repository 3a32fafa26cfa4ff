#include <iconv.h>
#include <langinfo.h>
#include <locale.h>

#include <array>
#include <bit>

#include "platform/CodePage.h"

namespace tessarine
{

namespace
{

/// The system's name of a code page. It knows those of Windows by "CP" and the number, some also by longer names, and
/// those of the Macintosh by names alone.
std::string SystemName(const std::string& name)
{
    if (name == "windows-10007")
        return "MAC-CYRILLIC";
    if (name == "windows-10029")
        return "MAC-CENTRALEUROPE";
    constexpr std::string_view windows = "windows-";
    return name.starts_with(windows) ? "CP" + name.substr(windows.size()) : name;
}

/// UTF-16 as the text of this program.
constexpr const char* native = std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";

/// A converter to UTF-16.
class Converter
{
public:
    explicit Converter(const std::string& name) : handle_(iconv_open(native, name.c_str())) {}
    ~Converter()
    {
        if (IsOpen())
            iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool IsOpen() const { return handle_ != iconv_t(-1); }

    /// Appends what can be read of the bytes and takes it off them. What is left begins with bytes without a meaning.
    void Convert(std::string_view& bytes, String& text)
    {
        std::size_t left = bytes.size();
        char* source = const_cast<char*>(bytes.data());  // by the function's old signature; it only reads
        while (left > 0 && Append(&source, &left, text)) {
        }
        bytes.remove_prefix(bytes.size() - left);
    }

    /// Appends what a character at the end of the bytes was kept back for: it may have been joined with the next one.
    void Finish(String& text) { Append(nullptr, nullptr, text); }

private:
    /// One buffer full. False when the bytes that are left have no meaning.
    bool Append(char** source, std::size_t* left, String& text)
    {
        std::array<char16_t, 4096> buffer;
        char* target = reinterpret_cast<char*>(buffer.data());
        std::size_t room = sizeof buffer;
        const std::size_t result = iconv(handle_, source, left, &target, &room);
        text.append(buffer.data(), buffer.size() - room / sizeof(char16_t));
        return result != static_cast<std::size_t>(-1) || room < sizeof buffer;
    }

    iconv_t handle_;
};

/// Whether the code page is one of Windows with a byte for each character. These give the control characters U+0080 to
/// U+009F to bytes that they use for nothing else; the system's tables lack them.
bool KeepsControls(const std::string& systemName)
{
    return systemName.starts_with("CP125") || systemName == "CP874";
}

String Convert(std::string_view bytes, Converter& converter, bool keepsControls)
{
    String text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        converter.Convert(bytes, text);
        if (bytes.empty())
            break;
        const auto byte = static_cast<unsigned char>(bytes.front());
        text += keepsControls && byte < 0xA0 ? char16_t{byte} : u'\xFFFD';
        bytes.remove_prefix(1);
    }
    converter.Finish(text);
    return text;
}

}  // namespace

String FromCodePage(std::string_view bytes, const std::string& name)
{
    const std::string systemName = SystemName(name);
    if (Converter converter(systemName); converter.IsOpen())
        return Convert(bytes, converter, KeepsControls(systemName));
    const std::string usual = "CP1252";
    Converter converter(usual);
    return Convert(bytes, converter, KeepsControls(usual));
}

namespace
{

/// A converter from UTF-16.
class BackConverter
{
public:
    explicit BackConverter(const std::string& name) : handle_(iconv_open(name.c_str(), native)) {}
    ~BackConverter()
    {
        if (IsOpen())
            iconv_close(handle_);
    }
    BackConverter(const BackConverter&) = delete;
    BackConverter& operator=(const BackConverter&) = delete;

    bool IsOpen() const { return handle_ != iconv_t(-1); }

    /// Appends the bytes of what can be written of the text and takes it off it. What is left begins with a character
    /// that the code page doesn't have.
    void Convert(StringView& text, std::string& bytes)
    {
        std::size_t left = text.size() * sizeof(char16_t);
        // By the function's old signature; it only reads.
        char* source = const_cast<char*>(reinterpret_cast<const char*>(text.data()));
        while (left > 0) {
            std::array<char, 4096> buffer;
            char* target = buffer.data();
            std::size_t room = buffer.size();
            const std::size_t result = iconv(handle_, &source, &left, &target, &room);
            bytes.append(buffer.data(), buffer.size() - room);
            if (result == static_cast<std::size_t>(-1) && room == buffer.size())
                break;
        }
        text.remove_prefix(text.size() - left / sizeof(char16_t));
    }

private:
    iconv_t handle_;
};

}  // namespace

std::optional<std::string> ToCodePage(StringView text, const std::string& name)
{
    std::string systemName = SystemName(name);
    if (!BackConverter(systemName).IsOpen())
        systemName = "CP1252";  // as FromCodePage takes an unknown name
    BackConverter converter(systemName);
    std::string bytes;
    for (StringView rest = text; !rest.empty(); rest.remove_prefix(1)) {
        converter.Convert(rest, bytes);
        if (rest.empty())
            break;
        if (!KeepsControls(systemName) || rest.front() < 0x80 || rest.front() > 0x9F)
            return std::nullopt;
        bytes += static_cast<char>(rest.front());
    }
    // The one proof that holds for every code page, be it that bytes of a character mean another one as well.
    return FromCodePage(bytes, name) == text ? std::optional(std::move(bytes)) : std::nullopt;
}

std::string SystemCodePage()
{
    const char* const usual = "windows-1252";
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", locale_t{});
    if (!locale)
        return usual;
    const std::string name = nl_langinfo_l(CODESET, locale);
    freelocale(locale);
    // The second name stands for ASCII. A system that is set to one of these says nothing of texts from elsewhere.
    return name == "UTF-8" || name == "ANSI_X3.4-1968" ? usual : name;
}

}  // namespace tessarine
