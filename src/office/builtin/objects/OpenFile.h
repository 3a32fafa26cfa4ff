#pragma once

#include <memory>
#include <optional>

#include "office/builtin/objects/EmptyPage.h"
#include "office/builtin/reader/PresentationReader.h"

namespace tessarine::builtin
{

/// What all objects of one presentation share: the reader of its file, and what is looked for. It lives for as long as
/// one of these objects does, so that an object may be used after the presentation was closed.
class OpenFile
{
public:
    explicit OpenFile(std::shared_ptr<PresentationReader> reader) : reader_(std::move(reader)) {}

    PresentationReader& Reader() { return *reader_; }  ///< The door to the file.

    /// The page itself, or a page without shapes in place of null.
    PageReader& PageOrEmpty(PageReader* page) { return page == nullptr ? emptyPage_ : *page; }

    /// The search text prepared, for hints and for finding it. The last one is kept, since a run looks for one text all
    /// through a file; the reference is good until another text is asked for.
    const SoughtText& Sought(const String& text);

private:
    std::shared_ptr<PresentationReader> reader_;  // the provider watches it to know which files are open
    EmptyPage emptyPage_;
    std::optional<SoughtText> sought_;
};

using OpenFileReference = std::shared_ptr<OpenFile>;

}  // namespace tessarine::builtin
