#include "Pieces.hpp"

#include "../Text.hpp"

#include <algorithm>
#include <charconv>

namespace tool::bulk {
namespace {

    constexpr std::size_t READ_SIZE = std::size_t{256} * 1024;
    constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

} // namespace

Pieces::Pieces(Source& source, char separator, bool hasChunkHeaders)
    : source_(source)
    , separator_(separator)
    , hasChunkHeaders_(hasChunkHeaders)
{
}

bool Pieces::next(std::string& piece)
{
    if (!hasChunkHeaders_) {
        if (ahead().empty())
            return nextAsRead(piece);
        piece = ahead();
        passAhead(piece.size());
        return true;
    }

    // What was read may end anywhere in a chunk, and hold several of them.
    for (;;) {
        while (chunkRest_ == 0 && !ahead().empty())
            takeHeader();
        if (!ahead().empty()) {
            piece = ahead().substr(0, lengthOfRecords(ahead()));
            passAhead(piece.size());
            return true;
        }
        aheadBegin_ = 0;
        if (!nextAsRead(ahead_)) {
            if (chunkRest_ != 0 && !Source::isInterrupted())
                throw BadChunkHeader("the input ends within a chunk; records missing: "
                                     + std::to_string(chunkRest_));
            return false;
        }
    }
}

std::optional<std::string> Pieces::takeFirst()
{
    if (!nextAsRead(ahead_))
        return std::nullopt;
    std::string_view piece = ahead();
    std::string first(*takeRecord(piece, separator_));
    passAhead(ahead().size() - piece.size());
    return first;
}

std::string_view Pieces::ahead() const noexcept
{
    return std::string_view(ahead_).substr(aheadBegin_);
}

// Erasing at the front would move all the rest for each chunk.
void Pieces::passAhead(std::size_t length) noexcept
{
    aheadBegin_ += length;
}

bool Pieces::nextAsRead(std::string& piece)
{
    piece.swap(rest_);
    rest_.clear();
    std::size_t size = piece.size();
    std::size_t searched = size;
    while (!isAtEnd_) {
        // A long record makes the room for the next read as large as itself.
        piece.resize(size + std::max(READ_SIZE, size));
        const std::size_t count = source_.read(std::span(piece.data() + size, piece.size() - size));
        size += count;
        isAtEnd_ = count == 0;
        if (isAtEnd_ && Source::isInterrupted())
            size = 0; // the beginning of a record

        const std::size_t end =
            std::string_view(piece.data(), size).substr(std::min(searched, size)).rfind(separator_);
        if (end != std::string_view::npos) {
            const std::size_t length = searched + end + 1;
            rest_.assign(piece, length, size - length);
            size = length;
            break;
        }
        searched = size;
    }
    piece.resize(size);

    if (isFirst_ && size != 0) {
        isFirst_ = false;
        if (separator_ == '\n' && piece.starts_with(BYTE_ORDER_MARK))
            piece.erase(0, BYTE_ORDER_MARK.size());
        if (piece.empty())
            return next(piece);
    }
    return !piece.empty();
}

void Pieces::takeHeader()
{
    const std::size_t end = ahead().find(separator_);
    std::string_view header = ahead().substr(0, end);
    if (header.ends_with('\r'))
        header.remove_suffix(1);
    const auto [stop, error] =
        std::from_chars(header.data(), header.data() + header.size(), chunkRest_);
    if (error != std::errc() || stop != header.data() + header.size())
        throw BadChunkHeader("not the number of the records of a chunk: " + text::excerpt(header));
    passAhead(end == std::string_view::npos ? ahead().size() : end + 1);
}

// How much of it belongs to the chunk.
std::size_t Pieces::lengthOfRecords(std::string_view records)
{
    std::size_t length = 0;
    while (chunkRest_ != 0 && length != records.size()) {
        const std::size_t end = records.find(separator_, length);
        length = end == std::string_view::npos ? records.size() : end + 1;
        --chunkRest_;
    }
    return length;
}

} // namespace tool::bulk
