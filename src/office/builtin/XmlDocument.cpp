#include "office/builtin/XmlDocument.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "office/builtin/Damage.h"

namespace tessarine::builtin
{

namespace
{

constexpr unsigned int parseFlags = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol | pugi::parse_ws_pcdata |
                                    pugi::parse_doctype | pugi::parse_wconv_attribute;

/// The parser's node memory. What the document being parsed on this thread may still take is bounded: a refused
/// allocation ends the parse with a status, so that a hostile part costs no more than this. Its pages are all of one
/// size and used again by the next part, since a run parses one after the other.
class NodeMemory
{
public:
    ~NodeMemory()
    {
        for (void* page : pages_)
            std::free(page);
    }

    void Allow(std::uint64_t bytes) { left_ = bytes; }

    void* Allocate(std::size_t size)
    {
        if (size > left_)
            return nullptr;
        left_ -= size;
        auto* memory =
            static_cast<std::size_t*>(size == pageSize_ && !pages_.empty() ? TakePage() : std::malloc(size + header));
        if (memory == nullptr)
            return nullptr;
        *memory = size;
        if (pageSize_ == 0)
            pageSize_ = size;  // the first allocation of all is a page
        return reinterpret_cast<char*>(memory) + header;
    }

    void Free(void* allocated)
    {
        void* memory = static_cast<char*>(allocated) - header;
        if (*static_cast<std::size_t*>(memory) == pageSize_ && pages_.size() < keptPages)
            pages_.push_back(memory);
        else
            std::free(memory);
    }

private:
    static constexpr std::size_t header = alignof(std::max_align_t);
    static constexpr std::size_t keptPages = 32;  // 1 MiB

    void* TakePage()
    {
        void* page = pages_.back();
        pages_.pop_back();
        return page;
    }

    std::uint64_t left_ = 0;
    std::size_t pageSize_ = 0;
    std::vector<void*> pages_;
};

thread_local NodeMemory nodeMemory;

void* AllocateNodes(std::size_t size)
{
    return nodeMemory.Allocate(size);
}

void FreeNodes(void* memory)
{
    nodeMemory.Free(memory);
}

std::string_view LocalNameOf(const char* name)
{
    const char* colon = std::strchr(name, ':');
    return colon == nullptr ? name : colon + 1;
}

}  // namespace

XmlDocument::XmlDocument(std::string& bytes, std::string_view part, const Limits& limits)
{
    [[maybe_unused]] static const bool installed = [] {
        pugi::set_memory_management_functions(AllocateNodes, FreeNodes);
        return true;
    }();
    nodeMemory.Allow(limits.documentBytes);

    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (std::string_view(bytes).starts_with(byteOrderMark))
        skipped_ = byteOrderMark.size();
    const auto result = document_.load_buffer_inplace(bytes.data() + skipped_, bytes.size() - skipped_, parseFlags,
                                                      pugi::encoding_utf8);
    if (!result)
        throw Damage(part, result.description(), skipped_ + static_cast<std::size_t>(result.offset));
    for (const Node child : document_.children()) {
        if (child.type() == pugi::node_doctype)
            throw Damage(part, "it declares a document type, which is not allowed");
        if (child.type() == pugi::node_element && !root_)
            root_ = child;
    }
    if (!root_)
        throw Damage(part, "it has no content");

    for (const pugi::xml_attribute attribute : root_.attributes()) {
        const std::string_view name = attribute.name();
        if (name.starts_with("xmlns:"))
            prefixes_[static_cast<std::size_t>(NamespaceOf(attribute.value()))] = std::string(name.substr(6)) + ":";
    }
}

bool XmlDocument::Is(Node node, Ns ns, const char* localName) const
{
    const char* name = node.name();
    const std::string& prefix = prefixes_[static_cast<std::size_t>(ns)];
    if (!prefix.empty() && std::strncmp(name, prefix.data(), prefix.size()) == 0)
        return std::strcmp(name + prefix.size(), localName) == 0;
    const std::string_view local = LocalNameOf(name);
    if (local != localName)
        return false;
    const auto prefixLength = static_cast<std::size_t>(local.data() - name);
    return ResolvePrefix(node, std::string_view(name, prefixLength == 0 ? 0 : prefixLength - 1)) == ns;
}

Node XmlDocument::Child(Node parent, Ns ns, const char* localName) const
{
    for (Node child = parent.first_child(); child; child = child.next_sibling())
        if (Is(child, ns, localName))
            return child;
    return {};
}

const char* XmlDocument::Attribute(Node node, Ns ns, const char* localName) const
{
    for (const pugi::xml_attribute attribute : node.attributes()) {
        const char* name = attribute.name();
        const char* colon = std::strchr(name, ':');
        if (colon == nullptr || std::strcmp(colon + 1, localName) != 0)
            continue;
        if (ResolvePrefix(node, std::string_view(name, static_cast<std::size_t>(colon - name))) == ns)
            return attribute.value();
    }
    return nullptr;
}

Ns XmlDocument::ResolvePrefix(Node node, std::string_view prefix) const
{
    for (; node.type() == pugi::node_element; node = node.parent()) {
        for (const pugi::xml_attribute attribute : node.attributes()) {
            std::string_view name = attribute.name();
            if (!name.starts_with("xmlns"))
                continue;
            name.remove_prefix(5);
            if (name.empty() ? prefix.empty() : name[0] == ':' && name.substr(1) == prefix)
                return NamespaceOf(attribute.value());
        }
    }
    return Ns::None;
}

std::string XmlDocument::TextOf(Node element)
{
    std::string text;
    for (const Node child : element.children())
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata)
            text += child.value();
    return text;
}

bool BooleanAttribute(Node node, const char* name, bool absent)
{
    const pugi::xml_attribute attribute = node.attribute(name);
    if (!attribute)
        return absent;
    const std::string_view value = attribute.value();
    return value == "1" || value == "true" || value == "on";
}

}  // namespace tessarine::builtin
