#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tessarine::standin
{

/// What a stand-in does in place of an ordinary answer.
enum class Action {
    Die,         ///< The process ends in the middle of the call, before it is carried out.
    DieAfter,    ///< The same once it was carried out, before the caller has the result.
    DieBetween,  ///< The process ends as soon as the caller has the result.
    Raise,       ///< The call fails with a number and a text, in the server's words.
    Result,      ///< The call fails with a bare number of the system's, such as that of a busy server.
    Wait,        ///< The answer comes late.
};

/// One order: what to do in which calls. An order that was carried out as often as it says is used up.
struct Order {
    Action action = Action::Raise;
    std::string call;       ///< How the call begins, as CallWatch names it; empty for every call.
    int skipped = 0;        ///< So many matching calls are answered as usual first.
    int times = 1;          ///< In so many calls then; negative for all that come.
    long number = 0;        ///< Of Raise and Result; milliseconds of Wait.
    std::string text = {};  ///< Of Raise, on one line.
};

/// Orders as lines of a file, by which a test tells a stand-in in another process what to do. They live on when the
/// process dies, so that an order may be for its successor, too.
///
/// "action<TAB>skipped<TAB>times<TAB>number<TAB>call<TAB>text", with the action by its number.
std::string ToLines(const std::vector<Order>& orders);
std::vector<Order> OrdersFromLines(const std::string& lines);  ///< Raises std::runtime_error for any other line.

/// The order for a call, if there is one, and the orders as they stand after it.
std::optional<Order> TakeOrder(std::vector<Order>& orders, const std::string& call, bool isAfter);

}  // namespace tessarine::standin
