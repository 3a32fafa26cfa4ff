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

/// What stands in for a name that the system doesn't know.
constexpr const char* usualName = "CP1252";

/// UTF-16 as the text of this program.
constexpr const char* nativeUtf16 = std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";

/// A converter of the system between two encodings, of which one is UTF-16.
class Converter
{
public:
    Converter(const std::string& target, const std::string& source)
        : handle_(iconv_open(target.c_str(), source.c_str()))
    {
    }
    ~Converter()
    {
        if (IsOpen())
            iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool IsOpen() const { return handle_ != iconv_t(-1); }

    /// Appends what can be converted of the source and takes it off it. What is left begins with units that have no
    /// meaning in the source or no counterpart in the target.
    template <class Source, class Target>
    void Convert(std::basic_string_view<Source>& source, std::basic_string<Target>& target)
    {
        std::size_t left = source.size() * sizeof(Source);
        // By the function's old signature; it only reads.
        char* from = const_cast<char*>(reinterpret_cast<const char*>(source.data()));
        while (left > 0 && Append(&from, &left, target)) {
        }
        source.remove_prefix(source.size() - left / sizeof(Source));
    }

    /// Appends what a character at the end of the bytes was kept back for: it may have been joined with the next one.
    void Finish(String& text) { Append(nullptr, nullptr, text); }

private:
    /// One buffer full. False when nothing more can be converted.
    template <class Target>
    bool Append(char** source, std::size_t* left, std::basic_string<Target>& target)
    {
        std::array<Target, 4096> buffer;
        char* to = reinterpret_cast<char*>(buffer.data());
        std::size_t room = sizeof buffer;
        const std::size_t result = iconv(handle_, source, left, &to, &room);
        target.append(buffer.data(), buffer.size() - room / sizeof(Target));
        return result != static_cast<std::size_t>(-1) || room < sizeof buffer;
    }

    iconv_t handle_;
};

Converter FromEncoding(const std::string& systemName)
{
    return {nativeUtf16, systemName};
}

Converter ToEncoding(const std::string& systemName)
{
    return {systemName, nativeUtf16};
}

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
    if (Converter converter = FromEncoding(systemName); converter.IsOpen())
        return Convert(bytes, converter, KeepsControls(systemName));
    Converter converter = FromEncoding(usualName);
    return Convert(bytes, converter, KeepsControls(usualName));
}

std::optional<std::string> ToCodePage(StringView text, const std::string& name)
{
    std::string systemName = SystemName(name);
    if (!ToEncoding(systemName).IsOpen())
        systemName = usualName;
    Converter converter = ToEncoding(systemName);
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
