#include "platform/linux/SystemText.hpp"

#include "text/Ascii.hpp"
#include "text/Utf.hpp"

namespace foundation::network::platform {

std::u16string fromSystemText(std::string_view bytes)
{
    std::u32string decoded;
    return text::decodeUtf8(bytes, decoded) ? text::toUtf16(decoded) : text::fromAscii(bytes);
}

} // namespace foundation::network::platform
