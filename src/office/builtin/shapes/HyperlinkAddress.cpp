#include "office/builtin/shapes/HyperlinkAddress.h"

#include <algorithm>
#include <vector>

#include "office/builtin/package/PercentEscape.h"
#include "office/builtin/reader/Refusals.h"
#include "platform/CommonEnds.h"
#include "platform/Failure.h"
#include "platform/Utf16.h"

namespace tessarine::builtin
{

namespace
{

enum class Kind { Web, File, Relative };

bool IsLetter(char16_t c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

/// A scheme has at least two letters, so that the drive in "C:" isn't taken for one.
bool HasScheme(StringView text)
{
    std::size_t length = 0;
    while (length < text.size() &&
           (IsLetter(text[length]) ||
            (length > 0 && (text[length] == u'+' || text[length] == u'-' || text[length] == u'.' ||
                            (text[length] >= u'0' && text[length] <= u'9')))))
        ++length;
    return length >= 2 && length < text.size() && text[length] == u':';
}

bool IsRooted(StringView path)
{
    return path.starts_with(u"\\\\") || (path.size() >= 2 && IsLetter(path[0]) && path[1] == u':');
}

bool StartsWithNoCase(std::string_view text, std::string_view lowerCase)
{
    return text.size() >= lowerCase.size() &&
           std::equal(lowerCase.begin(), lowerCase.end(), text.begin(),
                      [](char wanted, char c) { return wanted == (c >= 'A' && c <= 'Z' ? c + 32 : c); });
}

/// A target taken apart: bytes that show in no address, the address with the bytes of each unit, and the fragment.
struct Parts {
    Kind kind = Kind::Web;
    std::string scheme;  // "file:///" and the like, as written
    String address;
    std::vector<std::pair<std::size_t, std::size_t>> bytes;  // per unit, into body
    std::string_view body;
    std::string_view fragment;
    bool hasFragment = false;
};

/// Fills address and bytes from the body: characters in UTF-8, of which each byte may be written as an escape.
void ReadUnits(Parts& parts, bool decode)
{
    std::string decoded;
    std::vector<std::pair<std::size_t, std::size_t>> ranges;  // per decoded byte
    for (std::size_t i = 0; i < parts.body.size();) {
        const std::optional<char> escaped = decode ? PercentEscapeAt(parts.body, i) : std::nullopt;
        const std::size_t length = escaped ? percentEscapeLength : 1;
        decoded += escaped.value_or(parts.body[i]);
        ranges.emplace_back(i, i + length);
        i += length;
    }
    for (std::size_t i = 0; i < decoded.size();) {
        const auto lead = static_cast<unsigned char>(decoded[i]);
        std::size_t length = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        length = std::min(length, decoded.size() - i);
        String units = FromUtf8(std::string_view(decoded).substr(i, length));
        if (units.size() > 1 && !IsPairAt(units, 0)) {
            length = 1;  // no valid UTF-8: byte by byte
            units = FromUtf8(std::string_view(decoded).substr(i, 1));
        }
        for (char16_t unit : units) {
            if (decode && unit == u'/')
                unit = u'\\';
            parts.address += unit;
            parts.bytes.emplace_back(ranges[i].first, ranges[i + length - 1].second);
        }
        i += length;
    }
}

Parts TakeApart(std::string_view target, bool withFragment)
{
    Parts parts;
    const bool isFile = StartsWithNoCase(target, "file:");
    const bool hasScheme = HasScheme(FromUtf8(target));
    const bool isMail = StartsWithNoCase(target, "mailto:");
    parts.kind = isFile ? Kind::File : hasScheme ? Kind::Web : Kind::Relative;
    if (withFragment && !isMail) {
        const std::size_t hash = target.find('#');
        if (hash != std::string_view::npos) {
            parts.hasFragment = true;
            parts.fragment = target.substr(hash + 1);
            target = target.substr(0, hash);
        }
    }
    parts.body = target;
    if (isFile) {
        // file:///C:/a, file:///\\server\share, file://server/share, file:C:/a
        std::size_t skip = 5;
        while (skip < target.size() && target[skip] == '/' && skip < 8)
            ++skip;
        const bool server = skip == 7;  // two slashes: a server's name follows
        parts.scheme = target.substr(0, server ? 5 : skip);
        parts.body = target.substr(server ? 5 : skip);
    }
    ReadUnits(parts, parts.kind != Kind::Web);
    return parts;
}

/// Percent escapes for what may not stand in a target: blanks, controls, in paths what would read as an escape or a
/// fragment, and bytes that are no UTF-8.
std::string Encode(StringView text, Kind kind, bool forwardSlashes, bool withFragment)
{
    const char* digits = "0123456789ABCDEF";
    std::string target;
    const bool isPath = kind != Kind::Web;
    const auto put = [&](char byte, bool stray) {
        const bool escape = stray || byte == ' ' || (byte >= 0 && byte < 0x20) || byte == 0x7F ||
                            (isPath && byte == '%') || (isPath && withFragment && byte == '#');
        if (escape) {
            target += '%';
            target += digits[static_cast<unsigned char>(byte) >> 4];
            target += digits[byte & 0xF];
        } else {
            target += isPath && forwardSlashes && byte == '\\' ? '/' : byte;
        }
    };
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = IsPairAt(text, i) ? 2 : 1;
        for (const char byte : ToUtf8(text.substr(i, length)))
            put(byte, length == 1 && IsLowSurrogate(text[i]));
        i += length;
    }
    return target;
}

}  // namespace

TargetText ReadTarget(std::string_view target, bool withFragment)
{
    Parts parts = TakeApart(target, withFragment);
    return {std::move(parts.address), std::string(parts.fragment)};
}

bool IsFileAddress(StringView address)
{
    return !HasScheme(address);
}

std::string WriteTarget(std::string_view oldTarget, StringView address, bool withFragment)
{
    CheckAddressLength(address, withFragment);
    const Parts old = TakeApart(oldTarget, withFragment);
    if (address == old.address)
        return std::string(oldTarget);
    const Kind kind = HasScheme(address) ? Kind::Web : IsRooted(address) ? Kind::File : Kind::Relative;
    // Mail has no fragments: one that was handed on would read as part of the address.
    const bool takesFragment = old.hasFragment && !StartsWithNoCase(ToUtf8(address), "mailto:");
    const std::string fragment = takesFragment ? "#" + std::string(old.fragment) : std::string();
    const bool forwardSlashes = kind == Kind::Relative && old.body.find('\\') == std::string_view::npos;
    // A drive and a server begin in different ways; neither takes over the other's beginning.
    const bool otherRoot =
        kind == Kind::File && address.starts_with(u'\\') != StringView(old.address).starts_with(u'\\');
    if (kind != old.kind || otherRoot)
        return (kind == Kind::File ? "file:///" : "") + Encode(address, kind, forwardSlashes, withFragment) + fragment;

    const StringView before = old.address;
    const auto [front, back] = CommonEndsOf(before, address);

    const auto byteAt = [&](std::size_t unit) {
        return unit < old.bytes.size() ? old.bytes[unit].first : old.body.size();
    };
    const bool slashesOfFile = kind == Kind::File && old.body.find('\\') == std::string_view::npos;
    std::string target = old.scheme;
    target += old.body.substr(0, byteAt(front));
    const StringView between = address.substr(front, address.size() - front - back);
    target += Encode(between, kind, forwardSlashes || slashesOfFile, withFragment);
    target += old.body.substr(byteAt(before.size() - back));
    return target + fragment;
}

}  // namespace tessarine::builtin
