#pragma once

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace tessarine::fuzz
{

/// A random change of a document stream that leaves it one: records are changed, copied, moved and cut with the lengths
/// around them right, and the edits and directories still say where the objects are. Now and then it is bytes alone
/// that change, which mostly ends at the first length.
class RecordMutation
{
public:
    explicit RecordMutation(unsigned seed) : random_(seed) {}

    std::string Of(std::string_view stream);

private:
    /// A record, or bytes that are none.
    struct Node {
        bool isRecord = false;
        std::uint16_t head = 0;  // version and instance
        std::uint16_t type = 0;
        std::size_t begin = 0;     // in the old stream
        std::string bytes{};       // of an atom
        std::vector<Node> held{};  // in a container
    };
    using Nodes = std::vector<Node>;

    static Nodes NodesIn(std::string_view bytes, std::size_t begin, int depth);
    static std::string BytesOf(const Nodes& nodes);
    static std::size_t SizeOf(const Nodes& nodes);
    static void Move(Node& node, const std::map<std::uint32_t, std::uint32_t>& offsets);
    static void List(Nodes& nodes, std::vector<Nodes*>& lists);

    std::string WithOtherRecords(std::string_view stream);
    void Change(Nodes& nodes);
    void ChangeContent(std::string& bytes);
    std::size_t Below(std::size_t end) { return end == 0 ? 0 : random_() % end; }

    std::minstd_rand random_;
};

}  // namespace tessarine::fuzz
