#include "RecordMutation.h"

#include <array>
#include <utility>

#include "platform/LittleEndian.h"

namespace tessarine::fuzz
{

namespace
{

using littleendian::Append;
using littleendian::Get;
using littleendian::Put;

constexpr std::size_t headerSize = 8;

constexpr std::uint16_t userEdit = 4085;
constexpr std::uint16_t persistDirectory = 6002;
constexpr std::uint16_t characters = 4000;
constexpr std::uint16_t characterBytes = 4008;

/// Puts the new offset of what was at an old one; any other number stays.
void MoveOffset(std::string& bytes, std::size_t at, const std::map<std::uint32_t, std::uint32_t>& offsets)
{
    if (at + 4 > bytes.size())
        return;
    if (const auto moved = offsets.find(Get<std::uint32_t>(bytes, at)); moved != offsets.end())
        Put(bytes, at, moved->second);
}

}  // namespace

std::string RecordMutation::Of(std::string_view stream)
{
    if (Below(8) > 0)
        return WithOtherRecords(stream);
    std::string changed(stream);
    ChangeContent(changed);
    return changed;
}

std::string RecordMutation::WithOtherRecords(std::string_view stream)
{
    Nodes nodes = NodesIn(stream, 0, 0);
    if (nodes.empty())
        return std::string(stream);
    for (std::size_t changes = 1 + Below(4); changes > 0; --changes)
        Change(nodes);

    std::map<std::uint32_t, std::uint32_t> offsets;
    std::size_t begin = 0;
    for (const Node& node : nodes) {
        offsets.emplace(static_cast<std::uint32_t>(node.begin), static_cast<std::uint32_t>(begin));
        begin += SizeOf({node});
    }
    for (Node& node : nodes)
        Move(node, offsets);
    return BytesOf(nodes);
}

RecordMutation::Nodes RecordMutation::NodesIn(std::string_view bytes, std::size_t begin, int depth)
{
    constexpr int deepest = 30;
    Nodes nodes;
    std::size_t at = 0;
    while (bytes.size() - at >= headerSize) {
        const auto head = Get<std::uint16_t>(bytes, at);
        const auto length = Get<std::uint32_t>(bytes, at + 4);
        if (length > bytes.size() - at - headerSize)
            break;
        Node node{.isRecord = true, .head = head, .type = Get<std::uint16_t>(bytes, at + 2), .begin = begin + at};
        const std::string_view content = bytes.substr(at + headerSize, length);
        if ((head & 0xF) == 0xF && depth < deepest)
            node.held = NodesIn(content, node.begin + headerSize, depth + 1);
        else
            node.bytes = content;
        nodes.push_back(std::move(node));
        at += headerSize + length;
    }
    if (at < bytes.size())
        nodes.push_back({.begin = begin + at, .bytes = std::string(bytes.substr(at))});
    return nodes;
}

std::size_t RecordMutation::SizeOf(const Nodes& nodes)
{
    std::size_t size = 0;
    for (const Node& node : nodes)
        size += (node.isRecord ? headerSize : 0) + node.bytes.size() + SizeOf(node.held);
    return size;
}

std::string RecordMutation::BytesOf(const Nodes& nodes)
{
    std::string bytes;
    for (const Node& node : nodes) {
        const std::string content = node.bytes + BytesOf(node.held);
        if (node.isRecord) {
            Append(bytes, node.head);
            Append(bytes, node.type);
            Append(bytes, static_cast<std::uint32_t>(content.size()));
        }
        bytes += content;
    }
    return bytes;
}

/// An edit tells where the one before it and its directory are ([MS-PPT] 2.3.3), a directory where objects are: counts
/// of them stand in the upper twelve bits in front of their offsets ([MS-PPT] 2.3.5).
void RecordMutation::Move(Node& node, const std::map<std::uint32_t, std::uint32_t>& offsets)
{
    if (node.type == userEdit) {
        MoveOffset(node.bytes, 8, offsets);
        MoveOffset(node.bytes, 12, offsets);
    } else if (node.type == persistDirectory) {
        std::size_t at = 0;
        while (at + 4 <= node.bytes.size()) {
            std::size_t count = Get<std::uint32_t>(node.bytes, at) >> 20;
            for (at += 4; count > 0 && at < node.bytes.size(); --count, at += 4)
                MoveOffset(node.bytes, at, offsets);
        }
    }
}

void RecordMutation::List(Nodes& nodes, std::vector<Nodes*>& lists)
{
    if (!nodes.empty())
        lists.push_back(&nodes);
    for (Node& node : nodes)
        List(node.held, lists);
}

void RecordMutation::Change(Nodes& nodes)
{
    std::vector<Nodes*> lists;
    List(nodes, lists);
    if (lists.empty())
        return;
    Nodes& list = *lists[Below(lists.size())];
    Nodes& other = *lists[Below(lists.size())];
    const std::size_t index = Below(list.size());
    Node& node = list[index];
    const Node further = other[Below(other.size())];
    const auto place = list.begin() + static_cast<std::ptrdiff_t>(index);
    switch (Below(8)) {
        case 0:
            list.insert(place, further);
            break;
        case 1:
            node = further;
            break;
        case 2:
            list.erase(place);
            break;
        case 3:
            std::swap(node, list[Below(list.size())]);
            break;
        case 4:
            node.type = further.type;
            break;
        case 5:
            node.head = static_cast<std::uint16_t>(Below(2) == 0 ? further.head : node.head ^ (0x10u << Below(12)));
            break;
        default:
            ChangeContent(node.bytes);
            if (node.type == characters || node.type == characterBytes)
                node.type = Below(4) == 0 ? characters : node.type;
    }
}

void RecordMutation::ChangeContent(std::string& bytes)
{
    static constexpr std::array<std::uint32_t, 12> numbers{0,    1,      2,        4,          0xD,        0x7F,
                                                           0xFF, 0xFFFF, 0x100000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    const std::size_t at = Below(bytes.size() + 1);
    switch (Below(5)) {
        case 0:
            bytes.insert(at, Below(2) == 0 ? "a" : std::string("a\0", 2));
            break;
        case 1:
            bytes.erase(at, 1 + Below(8));
            break;
        case 2:
            bytes += bytes.substr(at, 64);
            break;
        case 3:
            if (at < bytes.size())
                bytes[at] = static_cast<char>(Below(256));
            break;
        default:
            if (const std::size_t aligned = at & ~std::size_t{3}; aligned + 4 <= bytes.size())
                Put(bytes, aligned,
                    Below(2) == 0 ? numbers[Below(numbers.size())]
                                  : static_cast<std::uint32_t>(Get<std::uint32_t>(bytes, aligned) + 2 - Below(5)));
    }
}

}  // namespace tessarine::fuzz
