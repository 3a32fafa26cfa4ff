#include "standin/OrderedWatch.h"

#include <fstream>
#include <iterator>

#include "office/windows/ComHeaders.h"
#include "platform/Failure.h"
#include "standin/Orders.h"

namespace tessarine::standin
{

namespace
{

std::string ContentOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class OrderedWatch final : public CallWatch
{
public:
    explicit OrderedWatch(const std::filesystem::path& folder)
        : orders_(folder / OrdersFile), log_(folder / LogFile, std::ios::binary | std::ios::app)
    {
        Note('#' + std::to_string(GetCurrentProcessId()));
    }

    void Before(const std::string& call) override
    {
        Note(' ' + call);
        Follow(call, false);
    }

    void After(const std::string& call) override { Follow(call, true); }
    void LookedUp(const std::string& name) override { Note('?' + name); }

private:
    void Note(const std::string& line)
    {
        // At once, since the process may die in this very call.
        log_ << line << '\n' << std::flush;
    }

    void Follow(const std::string& call, bool isAfter)
    {
        const std::string before = ContentOf(orders_);
        if (before.empty())
            return;
        auto orders = OrdersFromLines(before);
        const auto order = TakeOrder(orders, call, isAfter);
        if (const std::string left = ToLines(orders); left != before)
            std::ofstream(orders_, std::ios::binary | std::ios::trunc) << left;
        if (order)
            Do(*order);
    }

    static void Do(const Order& order)
    {
        switch (order.action) {
            case Action::Die:
            case Action::DieAfter:
                TerminateProcess(GetCurrentProcess(), 3);
                break;
            case Action::DieBetween:
                // A timer's turn comes when the call has been answered.
                SetTimer(nullptr, 0, 1, [](HWND, UINT, UINT_PTR, DWORD) { TerminateProcess(GetCurrentProcess(), 3); });
                break;
            case Action::Raise:
                throw Failure(order.number, FromUtf8(order.text), u"Stand-in");
            case Action::Result:
                throw PlainResult{order.number};
            case Action::Wait:
                Sleep(static_cast<DWORD>(order.number));
                break;
        }
    }

    const std::filesystem::path orders_;
    std::ofstream log_;
};

}  // namespace

std::shared_ptr<CallWatch> WatchIn(const std::filesystem::path& folder)
{
    return std::make_shared<OrderedWatch>(folder);
}

}  // namespace tessarine::standin
