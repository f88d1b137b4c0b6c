#include "Output.hpp"

#include "System.hpp"

#include <cstddef>
#include <system_error>

namespace tool {
namespace {

    constexpr std::size_t WORTH_WRITING = 65536;

    void writeOrGiveUp(std::string_view text)
    {
        try {
            system::writeAll(system::Stream::Error, text);
        } catch (const std::system_error&) {
            // There is no place left to tell it; the exit code still does.
            return;
        }
    }

} // namespace

void Output::endRecord()
{
    if (text_.size() >= WORTH_WRITING)
        flush();
}

void Output::flush()
{
    system::writeAll(system::Stream::Output, text_);
    text_.clear();
}

void Output::reportError(std::string_view message)
{
    std::string line = "iri: ";
    line.append(message).push_back('\n');
    writeToErrors(line);
}

void Output::reportFailure(std::string_view message) noexcept
{
    text_.clear();
    // Piece by piece, since there may be no memory to put it together.
    for (const std::string_view piece :
         {std::string_view("iri: "), message, std::string_view("\n")})
        writeOrGiveUp(piece);
}

void Output::writeToErrors(std::string_view text)
{
    flush();
    writeOrGiveUp(text);
}

} // namespace tool
