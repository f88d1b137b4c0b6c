// A text: it is taken if the second reading of the grammar takes it, and what parses, prints and
// parses again to the same.

#include "Target.hpp"

#include "build/NaiveText.hpp"
#include "iri/NaiveIri.hpp"
#include "iri/grammar/reference/SpiritGrammars.hpp"
#include "text/CodePointIterator.hpp"

#include <foundation/network/IRI.hpp>

#include <optional>
#include <sstream>
#include <string>

namespace foundation::network::fuzz {

namespace {

    using namespace tests;

    bool isReference(const std::string& utf8)
    {
        const std::optional<std::u32string> text = readUtf8(utf8);
        return text && reference::isIri(*text);
    }

    // What a stream shows.
    std::string narrowed(const std::u16string& text)
    {
        std::string narrow;
        for (const char16_t unit : text)
            narrow += unit < 0x80 ? static_cast<char>(unit) : '?';
        return narrow;
    }

    void requireSame(const IRI& iri, const IRI& again)
    {
        require(iri == again && !(iri != again), "what was printed parses to the same");
        require(!(iri < again) && !(again < iri), "nor does one sort before the other");
        require(iri.hashValue() == again.hashValue(), "and the hashes are the same");
        require(iri.isEmpty() == again.isEmpty(), "and both are empty or neither");
    }

    void requireComponents(const IRI& iri, const NaiveIri& naive)
    {
        const auto present = [](bool isPresent, auto read) {
            return isPresent ? std::optional<std::string>(read()) : std::nullopt;
        };
        require(present(iri.hasScheme(), [&] { return iri.getSchemeUtf8(); }) == naive.scheme
                    && present(iri.hasUserInfo(), [&] { return iri.getUserInfoUtf8(); })
                           == naive.userInfo
                    && present(iri.hasHost(), [&] { return iri.getHostUtf8(); }) == naive.host
                    && present(iri.hasPort(), [&] { return iri.getPortUtf8(); }) == naive.port
                    && iri.getPathUtf8() == naive.path
                    && present(iri.hasQuery(), [&] { return iri.getQueryUtf8(); }) == naive.query
                    && present(iri.hasFragment(), [&] { return iri.getFragmentUtf8(); })
                           == naive.fragment,
                "the components are those that the delimiters show");
    }

} // namespace

void run(Input input)
{
    const std::string text = input.rest();
    const std::optional<IRI> iri = IRI::tryParse(text);
    require(iri.has_value() == isReference(text), "what the grammar describes is taken");
    if (!iri)
        return;
    const std::string printed = iri->toStringUtf8();
    require(printed == toUtf8(fromUtf8(text)), "what was parsed is printed");
    requireSame(*iri, IRI(printed));
    requireSame(*iri, IRI(iri->toString()));
    require(iri->hashValue() == (text.empty() ? 0 : naiveHash(printed)), "the hash is FNV-1a");
    requireComponents(*iri, NaiveIri(printed));

    std::ostringstream stream;
    stream << *iri;
    require(stream.str() == narrowed(iri->toAsciiString()), "a stream shows the ASCII text");
    const std::string strict = iri->toStringUtf8(true);
    require(IRI(strict).toStringUtf8(true) == strict, "the strict text has nothing to repair");
    if (iri->hasHost() && iri->getHostUtf8().starts_with('[')
        && !text::isAllAscii(iri->getHostUtf8()))
        return; // the characters of an address are escaped, too, and then it is none any more
    const std::string strictAscii = iri->toAsciiStringUtf8(true);
    require(IRI(strictAscii).toAsciiStringUtf8(true) == strictAscii, "nor has the ASCII text");
}

} // namespace foundation::network::fuzz
