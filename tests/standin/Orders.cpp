#include "standin/Orders.h"

#include <sstream>
#include <stdexcept>

namespace tessarine::standin
{

namespace
{

/// What is done once a call was carried out; all else is done before.
bool IsAfter(Action action)
{
    return action == Action::DieAfter || action == Action::DieBetween;
}

}  // namespace

std::string ToLines(const std::vector<Order>& orders)
{
    std::ostringstream lines;
    for (const Order& order : orders)
        lines << static_cast<int>(order.action) << '\t' << order.skipped << '\t' << order.times << '\t' << order.number
              << '\t' << order.call << '\t' << order.text << '\n';
    return lines.str();
}

std::vector<Order> OrdersFromLines(const std::string& lines)
{
    std::vector<Order> orders;
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) {
        std::istringstream fields(line);
        Order order;
        int action = 0;
        fields >> action >> order.skipped >> order.times >> order.number;
        if (fields.get() != '\t' || !std::getline(fields, order.call, '\t'))
            throw std::runtime_error("not an order: " + line);
        std::getline(fields, order.text);
        order.action = static_cast<Action>(action);
        orders.push_back(order);
    }
    return orders;
}

std::optional<Order> TakeOrder(std::vector<Order>& orders, const std::string& call, bool isAfter)
{
    for (auto order = orders.begin(); order != orders.end(); ++order) {
        if (IsAfter(order->action) != isAfter || !call.starts_with(order->call))
            continue;
        if (order->skipped > 0) {
            --order->skipped;
            continue;
        }
        const Order taken = *order;
        if (order->times > 0 && --order->times == 0)
            orders.erase(order);
        return taken;
    }
    return {};
}

}  // namespace tessarine::standin
