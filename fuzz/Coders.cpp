// A letter that says what the component has to know of its neighbours, one that says how the text is
// written, and the text of a component: all conversions between its forms are those of the naive
// coders.

#include "Target.hpp"

#include "iri/CoderPairs.hpp"
#include "text/Failure.hpp"
#include "text/NaiveUtf8.hpp"

namespace foundation::network::fuzz {

namespace {

    using namespace iri;
    using naive::Component;
    using naive::Text;

    template <class Coder>
    void requireSame(Component component, const Text& text, const naive::Context& context)
    {
        const auto ourContext = naive::contextFor(typename Coder::Context{}, context);
        for (const naive::CoderPair<Coder>& pair : naive::coderPairs<Coder>) {
            naive::MaybeText ours, theirs;
            const auto failure = tests::failureOf([&] { ours = pair.ours(text, ourContext); });
            const auto expected =
                tests::failureOf([&] { theirs = pair.theirs(component, text, context); });
            require(ours == theirs && failure == expected, pair.name);
        }
        const auto staysSame = [&](bool isTold, auto convert) {
            return !isTold || convert(text, ourContext).value_or(Text()) == text;
        };
        require(staysSame(Coder::isSameInIri(text, ourContext), Coder::decodedToIri)
                    && staysSame(Coder::isSameInAscii(text, ourContext), Coder::iriToAscii)
                    && staysSame(Coder::isSameDecoded(text, ourContext), Coder::iriToDecoded),
                "what is told to stay the same does so");
    }

} // namespace

void run(Input input)
{
    const unsigned bits = input.byte();
    const naive::Context context{(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0,
                                 (bits & 8) != 0};
    const bool isUtf8 = input.byte() % 2 == 0;
    const auto read = isUtf8 ? tests::readUtf8(input.rest()) : input.words();
    if (!read)
        return;
    requireSame<UserInfoCoder>(Component::UserInfo, *read, context);
    requireSame<HostCoder>(Component::Host, *read, context);
    requireSame<PathCoder>(Component::Path, *read, context);
    requireSame<QueryCoder>(Component::Query, *read, context);
    requireSame<FragmentCoder>(Component::Fragment, *read, context);
}

} // namespace foundation::network::fuzz
