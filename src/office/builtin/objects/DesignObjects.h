#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "model/PowerPoint.h"
#include "office/builtin/objects/ListObject.h"
#include "office/builtin/objects/OpenFile.h"

namespace tessarine::builtin
{

/// The designs of a presentation, one per slide master. All slides of a design are given the same object, so that its
/// name and its master are read once. A design without a title master raises `InvalidRequest` when it is asked for it.
class DesignsObject final : public ListObject<powerpoint::Design>
{
public:
    explicit DesignsObject(OpenFileReference file);  ///< Counts the designs, and reads none.

    /// The design at an index from 0. Without an index, the design of a slide that has none in the file: one without a
    /// name and without shapes.
    std::shared_ptr<powerpoint::Design> At(std::optional<std::size_t> index) const;

protected:
    /// The same objects that At gives.
    std::vector<std::shared_ptr<powerpoint::Design>> MakeElements() override { return designs_; }

private:
    OpenFileReference file_;                                    // keeps the reader alive
    std::vector<std::shared_ptr<powerpoint::Design>> designs_;  // in the order of the file's masters
};

}  // namespace tessarine::builtin
