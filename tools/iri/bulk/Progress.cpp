#include "Progress.hpp"

#include "../System.hpp"

#include <string>
#include <string_view>
#include <system_error>

namespace tool::bulk {
namespace {

    constexpr std::string_view CLEAR_LINE = "\r\033[K";

    void write(std::string_view text)
    {
        try {
            system::writeAll(system::Stream::Error, text);
        } catch (const std::system_error&) {
            return; // nobody looks
        }
    }

} // namespace

Progress::Progress(std::optional<std::uint64_t> size)
    : size_(size)
    , isWanted_(system::isTerminal(system::Stream::Error)
                && !system::isTerminal(system::Stream::Output))
{
}

Progress::~Progress()
{
    if (isShown_)
        write(CLEAR_LINE);
}

void Progress::show(std::uint64_t records, std::uint64_t invalid, std::uint64_t bytes)
{
    if (!isWanted_)
        return;
    const Clock::time_point now = Clock::now();
    if (now < next_)
        return;
    next_ = now + std::chrono::milliseconds(200);
    isShown_ = true;

    const double seconds = std::chrono::duration<double>(now - begin_).count();
    const auto perSecond = static_cast<std::uint64_t>(static_cast<double>(records) / seconds);
    std::string line(CLEAR_LINE);
    line.append(std::to_string(records)).append(" records, ");
    line.append(std::to_string(invalid)).append(" invalid, ");
    line.append(std::to_string(perSecond)).append(" a second");
    if (size_ && bytes != 0 && bytes <= *size_) {
        const double left =
            seconds * static_cast<double>(*size_ - bytes) / static_cast<double>(bytes);
        line.append(", ")
            .append(std::to_string(static_cast<std::uint64_t>(left)))
            .append(" s left");
    }
    write(line);
}

} // namespace tool::bulk
