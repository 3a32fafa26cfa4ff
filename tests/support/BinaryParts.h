#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "support/BinaryOle.h"
#include "support/BinaryText.h"

namespace tessarine::test::ppt
{

/// What the pages of a binary deck share while it is made: external objects, pictures, numbers of shapes, persist
/// objects that are found on the way.
class BinaryParts
{
public:
    explicit BinaryParts(std::vector<String> slideTitles) : slideTitles_(std::move(slideTitles)) {}

    /// The id of the link's record, which is made.
    std::uint32_t LinkId(const Link& link);

    /// An OLE object: its records behind ExOleObjAtom, its storage as bytes of the persist object (ExOleObjStg).
    std::uint32_t ObjectId(OleKind kind, const std::string& names, std::string storage);

    /// A movie beside the file.
    std::uint32_t MovieId(const String& path);

    /// The number of the one picture of the deck, which `Pictures` holds then.
    std::uint32_t PictureNumber();

    void BeginDrawing();
    std::uint32_t NextShapeId();
    std::uint32_t Drawing() const { return drawing_; }
    std::uint32_t ShapesOfDrawing() const { return inDrawing_; }
    std::uint32_t LastShapeId() const { return lastShape_; }

    /// ExObjList, "" without objects. OLE storages have the persist ids from `firstStorage` on, `step` apart.
    std::string ExternalObjects(std::uint32_t firstStorage, std::uint32_t step) const;
    std::string DrawingGroup() const;
    std::string Pictures() const;
    const std::vector<std::string>& Storages() const { return storages_; }

private:
    struct Object {
        std::uint32_t type = 0;  ///< Of the record.
        std::uint32_t id = 0;
        std::string records;
        std::size_t storage = 0;  ///< Of an OLE object.
    };
    struct Cluster {
        std::uint32_t drawing;
        std::uint32_t used;
    };

    std::string LocationOf(const Link& link) const;

    std::vector<String> slideTitles_;
    std::vector<Object> objects_;
    std::vector<std::pair<Link, std::uint32_t>> linkIds_;
    std::vector<std::string> storages_;
    std::vector<Cluster> clusters_;
    std::uint32_t drawing_ = 0;
    std::uint32_t inDrawing_ = 0;
    std::uint32_t shapes_ = 0;
    std::uint32_t lastShape_ = 0;
    bool picture_ = false;
};

}  // namespace tessarine::test::ppt
