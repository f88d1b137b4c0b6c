#pragma once

#include "Source.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tool::bulk {

/// A header that announces how many records follow does not do so.
class BadChunkHeader : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Cuts an input into pieces of whole records, as large as what is there at a time: whoever waits for
/// the answers to what was written so far gets them before more is read.
///
/// An interrupt ends the input behind the last record that was read to its end.
///
/// A record may be of any length, and holds any bytes but the one that ends it; the last needs no
/// end. One record, with some room to spare, is all that must fit into memory.
class Pieces {
public:
    /// @param separator  what ends a record
    /// @param hasChunkHeaders  whether a line with a number stands before as many records, and so on
    ///        till the end
    Pieces(Source& source, char separator, bool hasChunkHeaders);

    /// Fetches the next piece: one or more records, each with its end, but for the very last.
    /// @returns false if there is none
    /// @throws std::system_error, BadChunkHeader
    bool next(std::string& piece);

    /// Takes the first record of the input, before the first call of `next`. Not with chunk headers.
    /// @returns nothing if the input is empty
    std::optional<std::string> takeFirst();

private:
    bool nextAsRead(std::string& piece);
    void takeHeader();
    std::string_view ahead() const noexcept;
    void passAhead(std::size_t length) noexcept;
    std::size_t lengthOfRecords(std::string_view records);

    Source& source_;
    char separator_;
    bool hasChunkHeaders_;
    bool isFirst_ = true;
    bool isAtEnd_ = false;
    std::string rest_;            // of what was read: the beginning of a record
    std::string ahead_;           // what was read and is to be handed out next,
    std::size_t aheadBegin_ = 0;  // from here on
    std::uint64_t chunkRest_ = 0; // how many records of the chunk are still to come
};

/// Takes the first record off a piece.
/// @returns nothing if there is none left
inline std::optional<std::string_view> takeRecord(std::string_view& piece, char separator) noexcept
{
    if (piece.empty())
        return std::nullopt;
    const std::size_t end = piece.find(separator);
    const std::string_view record = piece.substr(0, end);
    piece.remove_prefix(end == std::string_view::npos ? piece.size() : end + 1);
    return record;
}

} // namespace tool::bulk
