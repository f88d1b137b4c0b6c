#include <foundation/network/iri/QueryPairs.hpp>

#include "text/HexDigits.hpp"
#include "text/WellFormed.hpp"

#include <algorithm>

namespace foundation::network::iri {

namespace {

    bool isSeparator(char c, QueryPairs::Separator separator) noexcept
    {
        return (c == '&' && separator != QueryPairs::Separator::Semicolon)
               || (c == ';' && separator != QueryPairs::Separator::Ampersand);
    }

    std::size_t pairLength(std::string_view rest, QueryPairs::Separator separator) noexcept
    {
        const auto end = std::find_if(rest.begin(), rest.end(),
                                      [separator](char c) { return isSeparator(c, separator); });
        return static_cast<std::size_t>(end - rest.begin());
    }

    char32_t characterAt(std::string_view text, std::size_t index) noexcept
    {
        return static_cast<unsigned char>(text[index]);
    }

    bool isEscapeAt(std::string_view text, std::size_t index) noexcept
    {
        return text.size() - index > 2 && text::isHexDigit(characterAt(text, index + 1))
               && text::isHexDigit(characterAt(text, index + 2));
    }

    std::string formDecoded(std::string_view text)
    {
        std::string result;
        result.reserve(text.size());
        for (std::size_t index = 0; index < text.size(); ++index) {
            if (text[index] == '%' && isEscapeAt(text, index)) {
                const char32_t value = text::hexDigitValue(characterAt(text, index + 1)) * 16
                                       + text::hexDigitValue(characterAt(text, index + 2));
                result.push_back(static_cast<char>(value));
                index += 2;
            } else {
                result.push_back(text[index] == '+' ? ' ' : text[index]);
            }
        }
        return result;
    }

    bool isUtf8(std::string_view text) noexcept
    {
        // RFC 3629, 3: no sequence begins with F8 to FF, as it may where IRIs are read.
        const auto isNoLead = [](char c) { return static_cast<unsigned char>(c) >= 0xF8; };
        return std::none_of(text.begin(), text.end(), isNoLead)
               && text::wellFormedLength(text) == text.size();
    }

} // namespace

QueryPairs::Iterator::Iterator(std::string_view rest, Separator separator, bool isAtEnd) noexcept
    : rest_(rest)
    , length_(pairLength(rest, separator))
    , separator_(separator)
    , isAtEnd_(isAtEnd)
{
}

QueryPair QueryPairs::Iterator::operator*() const
{
    const std::string_view written = rest_.substr(0, length_);
    const std::size_t equals = written.find('=');
    QueryPair pair;
    pair.hasValue = equals != written.npos;
    pair.writtenKey = written.substr(0, equals);
    pair.writtenValue = written.substr(pair.hasValue ? equals + 1 : written.size());
    pair.key = formDecoded(pair.writtenKey);
    pair.value = formDecoded(pair.writtenValue);
    pair.isText = isUtf8(pair.key) && isUtf8(pair.value);
    return pair;
}

QueryPairs::Iterator& QueryPairs::Iterator::operator++() noexcept
{
    isAtEnd_ = length_ == rest_.size();
    rest_.remove_prefix(isAtEnd_ ? length_ : length_ + 1);
    length_ = pairLength(rest_, separator_);
    return *this;
}

} // namespace foundation::network::iri
