// What a deck is on disk: the main part, its lists, and the parts beside it.
#include <algorithm>
#include <array>

#include "support/Deck.h"
#include "support/PackageDress.h"

namespace tessarine::test
{
namespace
{

constexpr int FirstSlideId = 256;
constexpr std::int64_t FirstMasterId = 2147483648;
constexpr std::int64_t IdsPerMaster = 100;  // a master and its layouts

std::string MainContentType(DeckKind kind)
{
    static const std::array<std::string, 7> types = {
        "application/vnd.openxmlformats-officedocument.presentationml.presentation.main+xml",
        "application/vnd.ms-powerpoint.presentation.macroEnabled.main+xml",
        "application/vnd.openxmlformats-officedocument.presentationml.template.main+xml",
        "application/vnd.ms-powerpoint.template.macroEnabled.main+xml",
        "application/vnd.openxmlformats-officedocument.presentationml.slideshow.main+xml",
        "application/vnd.ms-powerpoint.slideshow.macroEnabled.main+xml",
        "application/vnd.ms-powerpoint.addin.macroEnabled.main+xml",
    };
    return types.at(static_cast<std::size_t>(kind));
}

/// p:modifyVerifier with the hash of some password (ECMA-376 19.2.1.19).
const std::string ModifyVerifierXml =
    "<p:modifyVerifier cryptProviderType=\"rsaAES\" cryptAlgorithmClass=\"hash\" cryptAlgorithmType=\"typeAny\" "
    "cryptAlgorithmSid=\"14\" spinCount=\"100000\" saltData=\"bM0lUdH7BTSOzPoIJeCpLA==\" "
    "hashData=\"R2nYIGUYNtdLkQyPDhLmZFMBLMGLaxGyIB4IbKPONyNNvP1Ly1aCYb0dTxC4+UdMYcRGOCMVcsS8AhCn8yDmEg==\"/>";

const std::string ReadOnlyRecommendedXml =
    "<p:extLst><p:ext uri=\"{1B3BD6CB-2BF8-4CB3-9FAE-A49A5A3A0F5D}\"><p1710:readonlyRecommended "
    "xmlns:p1710=\"http://schemas.microsoft.com/office/powerpoint/2017/10/main\" val=\"1\"/></p:ext></p:extLst>";

/// What a notes master holds when nobody says otherwise.
std::vector<Shape> PlainNotesMaster()
{
    return {SlideImage(), Placeholder("body", 1, u"Click to edit Master text styles\nSecond level\nThird level")};
}

}  // namespace

void Deck::WriteSlides(PackageParts& package, PartWriter& main, std::string& list) const
{
    std::vector<int> firstLayouts;
    int nextLayout = 1;
    for (const SlideMaster& master : masters_) {
        firstLayouts.push_back(nextLayout);
        nextLayout += master.LayoutCount();
    }

    for (std::size_t i = 0; i < slides_.size(); ++i) {
        const OnLayout on = slides_[i].LayoutOf();
        const int first = firstLayouts.empty() ? 1 : firstLayouts.at(static_cast<std::size_t>(on.master - 1));
        slides_[i].Write(package, static_cast<int>(i) + 1, LayoutPart(first + on.layout - 1),
                         "ppt/notesMasters/notesMaster1.xml");
    }
    if (slides_.empty())
        return;

    list = "<p:sldIdLst>";
    for (std::size_t i = 0; i < slides_.size(); ++i) {
        const int number = slideOrder_.empty() ? static_cast<int>(i) + 1 : slideOrder_.at(i);
        const std::string part = "ppt/slides/slide" + std::to_string(number) + ".xml";
        list += "<p:sldId id=\"" + std::to_string(FirstSlideId + number - 1) + "\" r:id=\"" +
                main.Relate("slide", part) + "\"/>";
    }
    list += "</p:sldIdLst>";
}

void Deck::WriteMain(PackageParts& package, PartWriter& main) const
{
    std::string slideList;
    WriteSlides(package, main, slideList);

    std::string masterList = "<p:sldMasterIdLst>";
    const std::vector<SlideMaster> masters =
        masters_.empty() ? std::vector<SlideMaster>{SlideMaster(u"Office Theme")} : masters_;
    int number = 0;
    int layout = 1;
    for (const SlideMaster& master : masters) {
        const std::int64_t id = FirstMasterId + IdsPerMaster * number++;
        master.Write(package, number, layout, id + 1);
        layout += master.LayoutCount();
        masterList += "<p:sldMasterId id=\"" + std::to_string(id) + "\" r:id=\"" +
                      main.Relate("slideMaster", "ppt/slideMasters/slideMaster" + std::to_string(number) + ".xml") +
                      "\"/>";
    }
    masterList += "</p:sldMasterIdLst>";

    auto pageMasters = pageMasters_;
    const bool hasNotes = std::ranges::any_of(slides_, &SlideContent::HasNotes);
    if (hasNotes && !pageMasters.contains(PageMaster::Notes))
        pageMasters[PageMaster::Notes] = PlainNotesMaster();
    std::string pageLists;
    for (const auto& [kind, shapes] : pageMasters) {
        const std::string name = kind == PageMaster::Notes ? "notesMaster" : "handoutMaster";
        WritePageMaster(package, kind, shapes);
        pageLists += "<p:" + name + "IdLst><p:" + name + "Id r:id=\"" +
                     main.Relate(name, "ppt/" + name + "s/" + name + "1.xml") + "\"/></p:" + name + "IdLst>";
    }

    for (const auto& [name, size, seed] : media_) {
        package.DefaultType(name.substr(name.rfind('.') + 1), "application/octet-stream");
        package.Put(name, IncompressibleBytes(size, seed));
        main.Relate("http://schemas.microsoft.com/office/2007/relationships/media", name);
    }
    if (macros_) {
        package.Put("ppt/vbaProject.bin", "a macro project", "application/vnd.ms-office.vbaProject");
        main.Relate("http://schemas.microsoft.com/office/2006/relationships/vbaProject", "ppt/vbaProject.bin");
    }

    main.Finish(XmlDeclaration() + "<p:presentation" + RootNamespaces() + ">" + masterList + pageLists + slideList +
                    "<p:sldSz cx=\"12192000\" cy=\"6858000\"/><p:notesSz cx=\"6858000\" cy=\"9144000\"/>" +
                    (modifyVerifier_ ? ModifyVerifierXml : "") + (readOnlyRecommended_ ? ReadOnlyRecommendedXml : "") +
                    "</p:presentation>",
                MainContentType(kind_));
}

void Deck::WriteSignature(PackageParts& package, PartWriter& root) const
{
    const std::string base = "http://schemas.openxmlformats.org/package/2006/relationships/digital-signature/";
    const std::string type = "application/vnd.openxmlformats-package.digital-signature-";
    PartWriter origin(package, "_xmlsignatures/origin.sigs");
    package.DefaultType("sigs", type + "origin");
    origin.Relate(base + "signature", "_xmlsignatures/sig1.xml");
    origin.Finish({});
    package.Put(
        "_xmlsignatures/sig1.xml",
        XmlDeclaration() + "<Signature xmlns=\"http://www.w3.org/2000/09/xmldsig#\" Id=\"idPackageSignature\"/>",
        type + "xmlsignature+xml");
    root.Relate(base + "origin", "_xmlsignatures/origin.sigs");
}

PackageParts Deck::Parts() const
{
    PackageParts package;
    package.Reserve("[Content_Types].xml");
    PartWriter root(package, "");
    root.Relate("officeDocument", mainPart_);
    PartWriter main(package, mainPart_);
    WriteMain(package, main);
    properties_.Write(package, root);
    if (signed_)
        WriteSignature(package, root);
    root.Finish({});
    package.Put("[Content_Types].xml", package.ContentTypes());
    package.DropEmptyPlaces();
    return package;
}

}  // namespace tessarine::test
