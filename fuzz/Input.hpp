#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace foundation::network::fuzz {

/// The bytes of an input, which are taken from the front. Behind the end there are zeros and empty
/// texts, so that each input means something.
class Input {
public:
    explicit Input(std::string_view bytes) noexcept
        : rest_(bytes)
    {
    }

    bool isAtEnd() const noexcept { return rest_.empty(); }

    unsigned char byte() noexcept
    {
        if (rest_.empty())
            return 0;
        const auto first = static_cast<unsigned char>(rest_.front());
        rest_.remove_prefix(1);
        return first;
    }

    /// Up to the next line feed, which no IRI may hold, or to the end.
    std::string line() { return until('\n'); }

    /// Up to the next @p end, which is taken and not given, or to the end.
    std::string until(char end)
    {
        const std::size_t length = rest_.find(end);
        const std::string result(rest_.substr(0, length));
        rest_.remove_prefix(length == rest_.npos ? rest_.size() : length + 1);
        return result;
    }

    /// All that is left.
    std::string rest()
    {
        const std::string result(rest_);
        rest_ = {};
        return result;
    }

    /// All that is left, two bytes for each unit, the low one first.
    std::u16string units()
    {
        std::u16string result;
        while (!isAtEnd()) {
            const unsigned low = byte();
            result.push_back(static_cast<char16_t>(low + 256U * byte()));
        }
        return result;
    }

    /// All that is left, four bytes for each character, the low one first.
    std::u32string words()
    {
        std::u32string result;
        while (!isAtEnd()) {
            char32_t word = 0;
            for (unsigned shift = 0; shift < 32; shift += 8)
                word |= static_cast<char32_t>(byte()) << shift;
            result.push_back(word);
        }
        return result;
    }

private:
    std::string_view rest_;
};

} // namespace foundation::network::fuzz
