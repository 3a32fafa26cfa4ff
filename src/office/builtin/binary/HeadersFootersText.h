#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "office/builtin/reader/PageReader.h"
#include "office/builtin/records/Record.h"
#include "office/builtin/records/RecordEdits.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// A container of header and footer texts ([MS-PPT] 2.4.15): of one page, of all slides, or of all notes and handouts.
class HeadersFootersText
{
public:
    HeadersFootersText(std::string_view bytes, const Record& container);

    /// Nothing where it isn't shown; "" where it is and has no text.
    std::optional<String> Text(HeaderFooterKind kind) const;
    void PutText(HeaderFooterKind kind, StringView text);

    /// Hands the changes on, or those of a copy of it that stands in front of another record.
    void Put(RecordEdits& target) const;
    void PutCopy(std::size_t inFrontOf, RecordEdits& target) const;

private:
    std::string Bytes(std::uint16_t instance) const;

    std::string_view bytes_;
    Record container_;
    std::array<bool, 2> isShown_{};  // header, footer
    std::array<std::optional<String>, 2> texts_;
    bool isChanged_ = false;
};

}  // namespace tessarine::builtin
