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
    /// The reader must not be null. The path is what warnings name the file by.
    OpenFile(std::shared_ptr<PresentationReader> reader, String path)
        : reader_(std::move(reader)), path_(std::move(path))
    {
    }

    PresentationReader& Reader() { return *reader_; }  ///< The door to the file.
    const String& Path() const { return path_; }

    /// The page itself, or a page without shapes in place of null. Both live as long as this object.
    PageReader& PageOrEmpty(PageReader* page) { return page == nullptr ? emptyPage_ : *page; }

    /// The search text prepared, for hints and for finding it. The last one is kept, since a run looks for one text all
    /// through a file; the reference is good until another text is asked for.
    const SoughtText& Sought(const String& text);

    /// Whether the objects of so many shapes more may be kept for the next walk. Those of thousands of ordinary slides
    /// may, not those of all the slides that a hostile file can have.
    bool MayKeepShapes(std::size_t count);

private:
    std::shared_ptr<PresentationReader> reader_;  // the provider watches it to know which files are open
    String path_;
    EmptyPage emptyPage_;
    std::optional<SoughtText> sought_;  // nothing before the first search
    std::size_t keptShapes_ = 0;
};

/// How the objects hold it: shared, so that the last of them closes the file.
using OpenFileReference = std::shared_ptr<OpenFile>;

}  // namespace tessarine::builtin
