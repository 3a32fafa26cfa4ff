#pragma once

#include <map>
#include <string>
#include <string_view>

namespace tessarine::test
{

/// The same part in the Strict form: the namespaces, relationship types and conformance="strict" on p:presentation.
std::string ToStrict(std::string xml);

/// The part with other namespace prefixes, inside markup only; "" makes the default namespace. Old to new.
std::string WithPrefixes(std::string_view xml, const std::map<std::string, std::string>& prefixes);

/// UTF-8 to UTF-16, little-endian with a byte order mark; the declaration says UTF-16.
std::string ToUtf16Part(std::string_view xml);

/// The part with a UTF-8 byte order mark in front.
std::string WithByteOrderMark(std::string_view xml);

/// `size` bytes that don't compress, the same for the same seed.
std::string IncompressibleBytes(std::size_t size, unsigned seed);

/// The text with every `from` as `to`. Raises std::invalid_argument when there is none, so that a test's edit can't
/// miss.
std::string Replaced(std::string text, std::string_view from, std::string_view to);

}  // namespace tessarine::test
