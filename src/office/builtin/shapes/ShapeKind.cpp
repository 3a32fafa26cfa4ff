#include "office/builtin/shapes/ShapeKind.h"

#include <algorithm>

#include "model/PowerPoint.h"

namespace tessarine::builtin
{

namespace
{

using namespace powerpoint;
using enum Ns;

Placeholder PlaceholderOf(const XmlDocument& document, Node placeholder)
{
    const std::string_view type = document.Attribute(placeholder, "type");
    if (type == "title" || type == "ctrTitle")
        return Placeholder::Title;
    if (type == "hdr")
        return Placeholder::Header;
    if (type == "ftr")
        return Placeholder::Footer;
    if (type == "sldImg")
        return Placeholder::SlideImage;
    return Placeholder::Other;
}

/// The object elements with the record's relationship, in all branches: they change together.
void CollectLinkElements(const XmlDocument& document, Node parent, ShapeRecord& record, int depth = 0)
{
    // Branches in branches: programs write one level, a hostile file may write any number.
    constexpr int deepest = 8;
    if (depth > deepest)
        return;
    for (const Node child : parent.ChildElements()) {
        if (document.Is(child, Presentation, "oleObj")) {
            if (document.Attribute(child, DocumentRelationships, "id") == record.linkId)
                record.linkElements.push_back(document.OffsetOf(child));
        } else if (document.Is(child, Compatibility, "AlternateContent") ||
                   document.Is(child, Compatibility, "Choice") || document.Is(child, Compatibility, "Fallback")) {
            CollectLinkElements(document, child, record, depth + 1);
        }
    }
}

std::int32_t TypeOfGraphicFrame(const XmlDocument& document, Node frame, ControlIds& controls, ShapeRecord& record)
{
    const Node data = document.Child(document.Child(frame, Drawing, "graphic"), Drawing, "graphicData");
    const std::string_view uri = document.Attribute(data, "uri");
    // The Transitional and the Strict names end alike.
    if (uri.ends_with("/table"))
        return msoTable;
    if (uri.ends_with("/chart") || uri.ends_with("/chartex"))
        return msoChart;
    if (uri.ends_with("/diagram"))
        return msoSmartArt;
    if (uri.ends_with("/webextension/2010/11"))
        return msoContentApp;
    if (uri.ends_with("/ole")) {
        Node holder = data;
        if (const Node alternate = document.Child(data, Compatibility, "AlternateContent"))
            holder = ChosenBranch(document, alternate);
        const Node object = document.Child(holder, Presentation, "oleObj");
        if (document.Child(object, Presentation, "link")) {
            record.linkId = document.Attribute(object, DocumentRelationships, "id").value_or("");
            CollectLinkElements(document, data, record);
            return msoLinkedOLEObject;
        }
        // The element is that of an embedded object in either case.
        const auto id = document.Attribute(object, DocumentRelationships, "id");
        return id && controls.Name(document, *id) ? msoOLEControlObject : msoEmbeddedOLEObject;
    }
    if (uri.find("am3d") != std::string_view::npos || uri.find("model3d") != std::string_view::npos)
        return mso3DModel;
    return msoAutoShape;
}

bool HasMedia(const XmlDocument& document, Node application)
{
    for (const char* name : {"videoFile", "audioFile", "wavAudioFile", "quickTimeFile", "audioCd"})
        if (document.Child(application, Drawing, name))
            return true;
    // Since PowerPoint 2010, media are named in an extension (p14:media).
    for (const Node extension : document.Child(application, Presentation, "extLst").ChildElements())
        for (const Node child : extension.ChildElements())
            if (document.Is(child, Understood, "media"))
                return true;
    return false;
}

std::int32_t TypeOfPicture(const XmlDocument& document, Node picture, Node application)
{
    if (HasMedia(document, application))
        return msoMedia;
    const Node blip = document.Child(document.Child(picture, Presentation, "blipFill"), Drawing, "blip");
    if (document.Attribute(blip, DocumentRelationships, "link"))
        return msoLinkedPicture;
    // PowerPoint stores an SVG picture as a bitmap, with the SVG in an extension.
    for (const Node extension : document.Child(blip, Drawing, "extLst").ChildElements())
        for (const Node child : extension.ChildElements())
            if (document.Is(child, Understood, "svgBlip"))
                return msoGraphic;
    return msoPicture;
}

std::string_view PresetOf(const XmlDocument& document, Node shape)
{
    const Node geometry = document.Child(document.Child(shape, Presentation, "spPr"), Drawing, "prstGeom");
    return document.Attribute(geometry, "prst");
}

std::int32_t TypeOfShape(const XmlDocument& document, Node shape)
{
    const Node nonVisual = document.Child(shape, Presentation, "nvSpPr");
    if (document.BooleanAttribute(document.Child(nonVisual, Presentation, "cNvSpPr"), "txBox", false))
        return msoTextBox;
    const Node properties = document.Child(shape, Presentation, "spPr");
    for (const Node child : properties.ChildElements()) {
        if (document.Is(child, Drawing, "custGeom"))
            return msoFreeform;
        if (document.Is(child, Drawing, "prstGeom")) {
            const std::string_view preset = document.Attribute(child, "prst");
            return preset == "line" || preset == "lineInv" ? msoLine : msoAutoShape;
        }
    }
    return msoAutoShape;
}

}  // namespace

bool ControlIds::Name(const XmlDocument& document, std::string_view id)
{
    if (!ids_) {
        ids_.emplace();
        const Node slide = document.Child(document.Root(), Presentation, "cSld");
        Read(document, document.Child(slide, Presentation, "controls"));
    }
    return ids_->contains(std::string(id));
}

void ControlIds::Read(const XmlDocument& document, Node controls)
{
    for (const Node child : controls.ChildElements()) {
        if (document.Is(child, Presentation, "control")) {
            if (const auto id = document.Attribute(child, DocumentRelationships, "id"))
                ids_->emplace(*id);
        } else if (document.Is(child, Compatibility, "AlternateContent")) {
            Read(document, ChosenBranch(document, child));
        }
    }
}

bool IsShape(const XmlDocument& document, Node element)
{
    const auto is = [&](const char* name) { return document.Is(element, Presentation, name); };
    return is("sp") || is("pic") || is("graphicFrame") || is("grpSp") || is("cxnSp") || is("contentPart") ||
           document.Is(element, Understood, "contentPart") || document.Is(element, Understood, "model3d");
}

bool ClassifyShape(const XmlDocument& document, Node element, ControlIds& controls, ShapeRecord& record)
{
    const auto is = [&](const char* name) { return document.Is(element, Presentation, name); };
    const bool isShape = is("sp");
    const bool isPicture = !isShape && is("pic");
    const bool isFrame = !isShape && !isPicture && is("graphicFrame");
    if (isShape || isPicture || isFrame) {
        const NonVisual nonVisual = NonVisualOf(document, element);
        if (const Node placeholder = document.Child(nonVisual.application, Presentation, "ph")) {
            // First of all: a placeholder is one whatever has been put into it.
            record.type = msoPlaceholder;
            record.placeholder = PlaceholderOf(document, placeholder);
        } else if (isShape) {
            record.type = TypeOfShape(document, element);
        } else if (isPicture) {
            record.type = TypeOfPicture(document, element, nonVisual.application);
        } else {
            record.type = TypeOfGraphicFrame(document, element, controls, record);
        }
        // Lines and slide images hold no text, even where the markup has one; nor does a text box that is a line.
        const bool isLine =
            record.type == msoLine || (record.type == msoTextBox && PresetOf(document, element) == "line");
        record.hasTextFrame = isShape && !isLine && record.placeholder != Placeholder::SlideImage;
    } else if (is("grpSp")) {
        record.type = msoGroup;
    } else if (is("cxnSp")) {
        const Node geometry = document.Child(document.Child(element, Presentation, "spPr"), Drawing, "prstGeom");
        const std::string_view preset = document.Attribute(geometry, "prst");
        record.type = preset == "line" || preset == "straightConnector1" ? msoLine : msoAutoShape;
    } else if (is("contentPart") || document.Is(element, Understood, "contentPart")) {
        record.type = msoInk;
    } else if (document.Is(element, Understood, "model3d")) {
        record.type = mso3DModel;
    } else {
        return false;
    }
    return true;
}

Node ChosenBranch(const XmlDocument& document, Node alternateContent)
{
    const auto understands = [&](Node choice) {
        std::string_view required = document.Attribute(choice, "Requires");
        bool any = false;
        while (!required.empty()) {
            const std::size_t blank = std::min(required.find(' '), required.size());
            const std::string_view prefix = required.substr(0, blank);
            required.remove_prefix(std::min(blank + 1, required.size()));
            if (prefix.empty())
                continue;
            any = true;
            if (document.ResolvePrefix(choice, prefix) == None)
                return false;
        }
        // A choice has to require something (ECMA-376 part 3, 9.3).
        return any;
    };
    for (const Node branch : alternateContent.ChildElements())
        if (document.Is(branch, Compatibility, "Choice") && understands(branch))
            return branch;
    return document.Child(alternateContent, Compatibility, "Fallback");
}

NonVisual NonVisualOf(const XmlDocument& document, Node shape)
{
    NonVisual result;
    for (const Node child : shape.ChildElements()) {
        for (const Node property : child.ChildElements()) {
            if (document.Is(property, Presentation, "cNvPr"))
                result.drawing = property;
            else if (document.Is(property, Presentation, "nvPr"))
                result.application = property;
        }
        break;  // the non-visual properties are a shape's first child
    }
    return result;
}

}  // namespace tessarine::builtin
