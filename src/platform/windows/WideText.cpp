#include "platform/windows/WideText.hpp"

namespace foundation::network::platform {

namespace {

    static_assert(sizeof(wchar_t) == sizeof(char16_t), "wide text is UTF-16 here");

    bool isHighSurrogate(char16_t unit) noexcept
    {
        return (unit & 0xFC00U) == 0xD800U;
    }

    bool isLowSurrogate(char16_t unit) noexcept
    {
        return (unit & 0xFC00U) == 0xDC00U;
    }

} // namespace

std::u16string fromWideText(std::wstring_view text)
{
    constexpr char16_t REPLACEMENT = u'\uFFFD';

    std::u16string result(text.begin(), text.end());
    for (std::size_t i = 0; i < result.size(); ++i) {
        if (isHighSurrogate(result[i]) && i + 1 < result.size() && isLowSurrogate(result[i + 1]))
            ++i;
        else if (isHighSurrogate(result[i]) || isLowSurrogate(result[i]))
            result[i] = REPLACEMENT;
    }
    return result;
}

} // namespace foundation::network::platform
