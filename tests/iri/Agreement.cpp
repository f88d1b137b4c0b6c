#include "iri/Agreement.hpp"

#include "build/NaiveText.hpp"
#include "iri/Expect.hpp"

#include <foundation/network/IRI.hpp>
#include <foundation/network/iri/Diagnosis.hpp>
#include <foundation/network/iri/IRIView.hpp>

#include <cstddef>
#include <exception>
#include <optional>
#include <string_view>

namespace foundation::network::tests {

namespace {

    // What the constructor makes of a text.
    struct Constructed {
        std::optional<IRI> value;
        bool isBadEncoding = false;
    };

    template <class Text>
    Constructed construct(const Text& text)
    {
        try {
            return {IRI(text)};
        } catch (const LogicFailure&) {
            return {};
        } catch (const std::exception&) {
            return {std::nullopt, true};
        }
    }

    // The first difference, or nothing.
    std::string differenceOfValues(const std::optional<IRI>& tried, const IRI& expected)
    {
        if (!tried)
            return "tryParse refuses";
        if (!(*tried == expected) || tried->isEmpty() != expected.isEmpty()
            || tried->toString() != expected.toString())
            return "tryParse gives another value";
        return "";
    }

    // Sequences with a lead from F8 up become what they are read as.
    std::string asUtf8(std::string_view text)
    {
        std::string result(text);
        for (char& c : result)
            if (static_cast<unsigned char>(c) >= 0xF8)
                c = static_cast<char>(0xF0 | (static_cast<unsigned char>(c) & 7));
        return result;
    }

    std::optional<std::string> asUtf8(const std::optional<std::string_view>& text)
    {
        return text ? std::optional(asUtf8(*text)) : std::nullopt;
    }

    std::string differenceOfViews(const std::string& text, const std::optional<IRI>& expected)
    {
        const std::optional<iri::IRIView> view = iri::IRIView::parse(text);
        if (view.has_value() != expected.has_value())
            return view ? "the view takes it" : "the view refuses";
        if (!view)
            return "";
        const IRI& iri = *expected;
        const auto present = [](bool isPresent, auto read) {
            return isPresent ? std::optional<std::string>(read()) : std::nullopt;
        };
        const bool agrees =
            view->text() == text && view->isEmpty() == iri.isEmpty()
            && asUtf8(view->scheme())
                   == present(iri.hasScheme(), [&] { return iri.getSchemeUtf8(); })
            && asUtf8(view->authority())
                   == present(iri.hasAuthority(), [&] { return iri.getAuthorityUtf8(); })
            && asUtf8(view->userInfo())
                   == present(iri.hasUserInfo(), [&] { return iri.getUserInfoUtf8(); })
            && asUtf8(view->host()) == present(iri.hasHost(), [&] { return iri.getHostUtf8(); })
            && asUtf8(view->port()) == present(iri.hasPort(), [&] { return iri.getPortUtf8(); })
            && view->portNumber()
                   == (iri.hasPort() ? std::optional(iri.getPortNumber()) : std::nullopt)
            && asUtf8(view->path()) == iri.getPathUtf8()
            && asUtf8(view->query()) == present(iri.hasQuery(), [&] { return iri.getQueryUtf8(); })
            && asUtf8(view->fragment())
                   == present(iri.hasFragment(), [&] { return iri.getFragmentUtf8(); });
        return agrees ? "" : "the view shows other components";
    }

    std::string differenceOfViews(const std::u16string&, const std::optional<IRI>&)
    {
        return ""; // there are none of UTF-16
    }

    using iri::Diagnosis;

    template <class Text>
    Text ascii(const char* text)
    {
        const std::string_view view(text);
        return Text(view.begin(), view.end());
    }

    // How many code points these are. What is no text is refused.
    std::size_t codePointsOf(const std::string& text)
    {
        return readUtf8(text).value().size();
    }
    std::size_t codePointsOf(const std::u16string& text)
    {
        return fromUtf16(text).size();
    }

    // Whether a component was good so far and is not any more with what is at fault, where that is
    // one character: then the place is right.
    template <class Text>
    bool isTheRightPlace(const Text& text, const Diagnosis& diagnosis)
    {
        if (diagnosis.code != Diagnosis::Code::BadCharacter
            && diagnosis.code != Diagnosis::Code::BadEscape
            && diagnosis.code != Diagnosis::Code::ExtraAtSign)
            return true;
        const Text end =
            ascii<Text>(diagnosis.component == Diagnosis::Component::UserInfo ? "@" : "");
        const std::size_t endOfFault = diagnosis.offset + diagnosis.length;
        return diagnosis.length > 0 && IRI::tryParse(text.substr(0, diagnosis.offset) + end)
               && !IRI::tryParse(text.substr(0, endOfFault) + end);
    }

    template <class Text>
    std::string differenceOfDiagnoses(const Text& text, const Constructed& constructed)
    {
        const std::optional<Diagnosis> diagnosis = iri::diagnose(text);
        const std::optional<Text> repaired = iri::repair(text);
        if (diagnosis.has_value() == constructed.value.has_value())
            return diagnosis ? "there is a diagnosis" : "there is no diagnosis";
        if (!diagnosis)
            return repaired == text ? "" : "a good text is repaired";

        const bool isBadEncoding = diagnosis->code == Diagnosis::Code::BadUtf8
                                   || diagnosis->code == Diagnosis::Code::BadUtf16;
        if (isBadEncoding != constructed.isBadEncoding)
            return "the diagnosis has another opinion of the encoding";
        if (diagnosis->offset > text.size() || diagnosis->length > text.size() - diagnosis->offset)
            return "the diagnosis lies outside of the text";
        if (codePointsOf(text.substr(0, diagnosis->offset)) != diagnosis->codePointOffset)
            return "the diagnosis counts other code points";
        if (diagnosis->expected.empty())
            return "the diagnosis expects nothing";
        if (repaired && diagnosis->code == Diagnosis::Code::BadUtf16)
            return "broken UTF-16 is repaired";
        if (!isTheRightPlace(text, *diagnosis))
            return "the diagnosis is of another place";
        if ((diagnosis->component == Diagnosis::Component::None)
            != (diagnosis->code == Diagnosis::Code::SurroundingSpace))
            return "the diagnosis is of another component";
        if (repaired && (iri::diagnose(*repaired) || !IRI::tryParse(*repaired)))
            return "the repaired text is no IRI";
        return "";
    }

    template <class Text>
    std::string differenceOf(const Text& text)
    {
        const Constructed constructed = construct(text);
        const std::optional<IRI> tried = IRI::tryParse(text);
        if (std::string what = differenceOfViews(text, constructed.value); !what.empty())
            return what;
        if (std::string what = differenceOfDiagnoses(text, constructed); !what.empty())
            return what;
        if (!constructed.value)
            return tried ? "tryParse takes it" : "";
        return differenceOfValues(tried, *constructed.value);
    }

} // namespace

std::string difference(const std::string& text)
{
    return differenceOf(text);
}

std::string difference(const std::u16string& text)
{
    return differenceOf(text);
}

} // namespace foundation::network::tests
