#include <foundation/network/iri/IRIView.hpp>

#include "iri/Parts.ipp"
#include "iri/ReferenceReading.hpp"
#include "text/CodePointIterator.hpp"

#include <type_traits>

namespace foundation::network::iri {

static_assert(std::is_trivially_copyable_v<IRIView>);

template <class It>
std::optional<IRIView> IRIView::parseBy(std::string_view utf8) noexcept
{
    const char* const begin = utf8.data();
    It first(begin);
    detail::Parts<It> parts;
    std::uint16_t portNumber = 0;
    if (!detail::readReference(first, It(begin + utf8.size()), parts, portNumber))
        return std::nullopt;
    parts.update();
    return IRIView(
        utf8,
        detail::rangesOf(parts,
                         [begin](It at) { return static_cast<std::size_t>(at.base() - begin); }),
        portNumber);
}

std::optional<IRIView> IRIView::parse(std::string_view utf8) noexcept
{
    if (text::isAllAscii(utf8))
        return parseBy<text::AsciiIterator>(utf8);
    if (text::endsInsideSequence(utf8))
        return std::nullopt;
    return parseBy<text::Utf8Iterator>(utf8);
}

} // namespace foundation::network::iri
