#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessarine::fuzz
{

/// A package written out as text, so that a fuzzer's changes reach the parts: in a zip file they would only meet wrong
/// checksums. Each entry is a line "@@ name" and its content after it, up to the line end in front of the next.
///
///     @@ ppt/slides/slide1.xml
///     <p:sld ...
///     @@ ppt/slides/_rels/slide1.xml.rels
///     <Relationships ...
class WrittenPackage
{
public:
    explicit WrittenPackage(std::string_view text);

    /// The content of the first entry of that name; "" without one.
    std::string_view Entry(std::string_view name) const;

    std::string ZipBytes() const;  ///< All entries, stored.

private:
    std::vector<std::pair<std::string_view, std::string_view>> entries_;
};

/// The reverse, for making seeds.
void AppendEntry(std::string& text, std::string_view name, std::string_view content);

}  // namespace tessarine::fuzz
