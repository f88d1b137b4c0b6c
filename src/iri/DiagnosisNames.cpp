// The words for codes and components.

#include <foundation/network/iri/Diagnosis.hpp>

#include <array>
#include <cstddef>

namespace foundation::network::iri {

namespace {

    struct Words {
        std::string_view name;
        std::string_view description;
    };

    // In the order of Diagnosis::Code.
    constexpr std::array<Words, 15> codeWords{{
        {"bad-utf8", "these bytes are no UTF-8"},
        {"bad-utf16", "this surrogate stands alone"},
        {"surrounding-space", "white space stands around the text"},
        {"missing-scheme", "a scheme must stand in front of this \":\""},
        {"bad-scheme", "a scheme begins with a letter and holds letters, digits, \"+\", \"-\" and "
                       "\".\"; a path that is not to be read as one begins with \"./\""},
        {"bad-character", "this character may stand here only as an escape"},
        {"bad-escape", "this \"%\" has no two hexadecimal digits behind it"},
        {"extra-at-sign", "only one \"@\" may stand before the host; others must be escaped"},
        {"bad-ip-literal", "no IP address goes on like this"},
        {"unclosed-ip-literal", "the \"[\" of this address has no \"]\""},
        {"text-after-ip-literal", "only a port may follow an address in brackets"},
        {"unbracketed-ipv6", "an IPv6 address must stand in brackets"},
        {"empty-port", "no port follows this \":\""},
        {"bad-port", "a port holds the digits 0 to 9 only"},
        {"port-too-large", "no port is above 65535"},
    }};
    static_assert(codeWords.size() == static_cast<std::size_t>(Diagnosis::Code::PortTooLarge) + 1);

    // In the order of Diagnosis::Component.
    constexpr std::array<std::string_view, 8> componentNames{
        "none", "scheme", "user-info", "host", "port", "path", "query", "fragment"};
    static_assert(componentNames.size()
                  == static_cast<std::size_t>(Diagnosis::Component::Fragment) + 1);

    Words wordsOf(Diagnosis::Code code) noexcept
    {
        const auto index = static_cast<std::size_t>(code);
        return index < codeWords.size() ? codeWords[index] : Words{"unknown", "unknown"};
    }

} // namespace

std::string_view name(Diagnosis::Code code) noexcept
{
    return wordsOf(code).name;
}

std::string_view name(Diagnosis::Component component) noexcept
{
    const auto index = static_cast<std::size_t>(component);
    return index < componentNames.size() ? componentNames[index] : "unknown";
}

std::string_view describe(Diagnosis::Code code) noexcept
{
    return wordsOf(code).description;
}

} // namespace foundation::network::iri
