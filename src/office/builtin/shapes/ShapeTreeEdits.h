#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "office/builtin/package/Package.h"
#include "office/builtin/shapes/ShapeTree.h"
#include "office/builtin/xml/XmlEdits.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

/// A text before and after the edits of its part.
struct TextChange {
    String before;
    String after;
};

/// What was read of a part with a shape tree, and all edits of it since: those of the shapes' texts, kept in pieces
/// (TextTree), and those of other elements. All are splices of the bytes that the tree was read from, so that none of
/// them moves another; Flush puts them into the bytes together.
class ShapeTreeEdits
{
public:
    /// Borrows both. `kept` is told whenever something is read that is kept here.
    ShapeTreeEdits(Package& package, Package::Entry entry, KeptParts::Part& kept)
        : package_(package), entry_(entry), kept_(kept)
    {
    }

    /// The tree, read when it is first asked for, which raises `FileCorrupt` for a damaged part. After Flush and LetGo
    /// it is read again; indices of shapes stay the same.
    ShapeTree& Tree();

    /// The part that the tree was read from, for edits. Kept until Flush or LetGo.
    const XmlDocument& Document();

    void KeepShapeNames() { names_ = ShapeNames::Kept; }  ///< In a tree that is read from now on.

    bool HasEdits() const;          ///< Since the last Flush.
    void LetGo();                   ///< Gives back all that was read. There must be no edits.
    std::size_t KeptBytes() const;  ///< About what all this takes of memory.

    /// A shape's text taken apart, for edits of its links. `body` is its index in the tree. Raises as TextBody::Open.
    TextTree& OpenText(std::size_t body);

    /// Changes the start tag of an element outside of the shapes' texts, or removes the element. Changes of one tag add
    /// up: each gets the tag as the one before has left it. Offsets are those in Document.
    void ChangeTag(std::size_t element, const std::function<void(std::string& tag)>& change);
    void RemoveElement(std::size_t element);

    void Grow(std::size_t bytes) { package_.Grow(entry_, bytes); }  ///< See Package::Grow.

    std::string_view PartName() const { return package_.NameOf(entry_); }  ///< For failures.

    /// The part's relationships. Their edits are the package's own and don't wait for Flush.
    Relationships& Links() { return package_.RelationshipsOf(entry_); }

    /// Calls `visit` with the part as it is now, which is parsed anew when there are edits.
    void VisitCurrent(const std::function<void(const XmlDocument&)>& visit);

    /// Makes an edit of the part. A failure other than a refusal (`InvalidRequest`, `BadArgument`, `Unspecified`),
    /// which comes before anything is changed, may have left half an edit: the package is not saved any more.
    template <class Edit>
    auto Try(Edit&& edit)
    {
        try {
            return edit();
        } catch (const Failure& failure) {
            if (!IsRefusal(failure))
                package_.GiveUp(entry_, failure.description);
            throw;
        } catch (...) {
            package_.GiveUp(entry_, u"The change could not be made to its end");
            throw;
        }
    }

    /// Whether a shape was edited since the last Flush that has another text in another branch of alternate content.
    bool LeavesOtherText() const;

    /// The text of the page's title, when the edits since the last Flush have changed it.
    std::optional<TextChange> TitleChange();

    /// Hands the part to the package when there are edits, and gives whether there were. Before that what was edited is
    /// read again: edited texts alone where that proves the part (TextCheck), else the whole part (EditedPart). Its
    /// shapes must have the texts that they have here, and `check` gets what was read of a whole part, to raise when it
    /// is not what was meant. Then nothing is handed on.
    bool Flush(const std::function<void(const ShapeTree& readAgain)>& check);

private:
    /// The bytes and their index. Both are large, and read only for edits.
    struct Original {
        explicit Original(const XmlDocument& read);

        std::string xml;
        XmlDocument document;  // borrows xml
    };

    static bool IsRefusal(const Failure& failure);

    /// All edits, of elements and of texts, in no order.
    std::vector<ByteEdit> Edits() const;

    bool TextsReadAgain(const std::vector<ByteEdit>& edits) const;
    /// Hands the part to the package once all of it has been read again. Raises as Flush does.
    void PutReadAgain(std::vector<ByteEdit> edits, const std::function<void(const ShapeTree& readAgain)>& check);

    /// Raises `FileCorrupt` unless the shapes read again are the same and have the texts that they have here.
    void CompareShapes(const ShapeTree& readAgain) const;

    Package& package_;
    Package::Entry entry_;
    KeptParts::Part& kept_;
    ShapeNames names_ = ShapeNames::LeftOut;
    std::optional<ShapeTree> tree_;             // nothing before it is asked for, and after Flush
    std::unique_ptr<Original> original_;        // null while nothing is edited
    std::map<std::size_t, ByteEdit> elements_;  // edits outside of the texts, by the offset of the element
};

}  // namespace tessarine::builtin
