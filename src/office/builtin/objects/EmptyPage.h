#pragma once

#include "office/builtin/reader/PageReader.h"

namespace tessarine::builtin
{

/// Stands for a notes page or master that the file doesn't have, so that no object meets a null page. PowerPoint shows
/// a default one there and adds it to the file when it is changed. This one has no shapes, because hits would be
/// counted in text that the file doesn't hold; its header and footer are empty and take no text.
class EmptyPage final : public PageReader
{
public:
    /// None, so that a walk ends at once.
    std::size_t ShapeCount() override { return 0; }

    /// This and every member below that names a shape or a link raises `InvalidRequest`, as there is none to name.
    ShapeFacts Shape(std::size_t shape) override;
    /// Nothing occurs here, whatever is sought.
    bool MayHold(const SoughtText& /*sought*/) override { return false; }
    std::optional<std::size_t> FindText(std::size_t shape, const TextPattern& pattern, std::size_t from) override;
    std::size_t ReplaceText(std::size_t shape, std::size_t begin, std::size_t length, StringView with) override;
    String TextAt(std::size_t shape, std::size_t begin, std::size_t length) override;
    String LinkSource(std::size_t shape) override;
    void PutLinkSource(std::size_t shape, const String& source) override;
    std::optional<String> HeaderFooter(HeaderFooterKind kind) override;     ///< "", as PowerPoint's default ones.
    void PutHeaderFooter(HeaderFooterKind kind, StringView text) override;  ///< Raises `InvalidRequest`.
    std::vector<std::size_t> HyperlinkIndices() override { return {}; }
    String HyperlinkAddress(std::size_t link) override;
    void PutHyperlinkAddress(std::size_t link, const String& address) override;
};

}  // namespace tessarine::builtin
