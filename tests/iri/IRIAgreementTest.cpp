// Whatever takes a text in takes the same texts as the constructor and makes the same of them: on
// all short texts over small alphabets, on texts one slip away from an IRI, and on broken encodings.

#include <foundation/network/IRI.hpp>
#include <foundation/network/iri/Diagnosis.hpp>
#include <foundation/network/iri/IRIView.hpp>

#include "iri/Expect.hpp"
#include "iri/IriGenerator.hpp"
#include "iri/NaiveIri.hpp"
#include "iri/ShortTexts.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace foundation::network {

namespace {

    using namespace tests;

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
    std::string difference(const Text& text)
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

    template <class Text>
    void expectAgreement(const Text& text)
    {
        if (const std::string what = difference(text); !what.empty())
            ADD_FAILURE() << what << ": " << testing::PrintToString(text);
    }

    template <class Text = std::string>
    rc::Gen<Text> insertedAnywhere(rc::Gen<Text> texts, std::vector<Text> pieces)
    {
        return rc::gen::exec([texts, pieces] {
            Text text = *texts;
            const auto at = *rc::gen::inRange<std::size_t>(0, text.size() + 1);
            const auto removed = *rc::gen::inRange<std::size_t>(0, 3);
            return text.replace(at, removed, *rc::gen::elementOf(pieces));
        });
    }

    const std::vector<std::string> slips{
        "",       " ",      "\t",     "\n",         "\"",         "<",    "\\",  "^",      "`",
        "{",      "|",      "[",      "]",          "[:",         "]:",   "@",   ":",      ":65536",
        "::",     "//",     "%",      "%4",         "#",          "?",    "é",   "٣",      "１",
        "\u0080", "\uFDD0", "\uE000", "\U000E0001", "\U0001FFFF", "\x7F", "v1.", "1.2.3.4"};

    const std::vector<std::string> defects{
        "\x80", "\xBF", "\xC3", "\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xE2\x82", "\xED\xA0\x80",
        "\xF0\x8F\xBF\xBF", "\xF0\x9F\x98", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80", "\xFF",
        // These are read as sequences of four.
        "\xF8\x90\x80\x80", "\xFF\x80\x80\x80", "\xFC\x80\x80\x80\x80\x80"};

} // namespace

TEST(IRIAgreement, onAllShortTextsOfDelimiters)
{
    const std::vector<std::string> pieces{"a", "1", ":", "/", "?", "#",
                                          "@", "[", "]", "%", ".", " "};
    forEachShortText(pieces, 5, [](const std::string& text) { expectAgreement(text); });
}

TEST(IRIAgreement, onAllShortAuthorities)
{
    const std::vector<std::string> pieces{"//", "[", "]", "::", "1", ":",       "v",
                                          ".",  "@", "/", "%4", "A", "1.2.3.4", "99999"};
    forEachShortText(pieces, 4, [](const std::string& text) {
        expectAgreement("//" + text);
        expectAgreement("x://[" + text + "]");
    });
}

TEST(IRIAgreement, onAllShortTextsOfBytes)
{
    const std::vector<std::string> pieces{"a",    ":",    "/",    "?",    "\x80", "\x90", "\xBF",
                                          "\xC3", "\xE2", "\xED", "\xF0", "\xF4", "\xF8", "\xFF"};
    forEachShortText(pieces, 4, [](const std::string& text) {
        expectAgreement(text);
        expectAgreement("//h/?" + text);
    });
}

TEST(IRIAgreement, onAllShortTextsOfUnits)
{
    const std::vector<std::u16string> pieces{u"a", u":",     u"/",     u"é",     u"\uFFFF",
                                             u" ", {0xD800}, {0xDBFF}, {0xDC00}, {0xDFFF}};
    forEachShortText(pieces, 4, [](const std::u16string& text) { expectAgreement(text); });
}

TEST(IRIAgreement, onEveryCodePoint)
{
    for (char32_t c = 0; c < 0x110000; ++c) {
        if (c >= 0x20000 && c < 0xE0000 && (c & 0xFFFF) > 0x20 && (c & 0xFFFF) < 0xFFF0)
            continue;
        std::u16string wide;
        if (c < 0x10000)
            wide = {static_cast<char16_t>(c)};
        else
            wide = {static_cast<char16_t>(0xD7C0 + (c >> 10)),
                    static_cast<char16_t>(0xDC00 + (c & 0x3FF))};
        for (const std::u16string& text : {wide + u":", u"//" + wide + u"@", u"//" + wide,
                                           u"//h:" + wide, wide, u"?" + wide, u"#" + wide}) {
            const Constructed constructed = construct(text);
            expectAgreement(text);
            if (constructed.value)
                expectAgreement(constructed.value->toStringUtf8());
        }
    }
}

RC_GTEST_PROP(IRIAgreement, onIris, ())
{
    const std::string text = *iriReferences();
    RC_ASSERT(difference(text) == "");
    RC_ASSERT(difference(utf16(text)) == "");
}

RC_GTEST_PROP(IRIAgreement, onTextsWithASlip, ())
{
    const std::string text = *insertedAnywhere(iriReferences(), slips);
    RC_ASSERT(difference(text) == "");
}

RC_GTEST_PROP(IRIAgreement, onTextsOfUnitsWithASlip, ())
{
    const auto wide =
        rc::gen::map(iriReferences(), [](const std::string& text) { return utf16(text); });
    const std::u16string text = *insertedAnywhere<std::u16string>(
        wide, {u" ", u"[", u":", u"@", u"%", {0xD800}, {0xDC00}, {0xDC00, 0xD800}});
    RC_ASSERT(difference(text) == "");
}

// Characters that a text may not show can always be shown as escapes: behind an authority, nothing
// that is written is beyond repair.
RC_GTEST_PROP(IRIAgreement, anyTextBehindAnAuthorityIsRepaired, ())
{
    const std::string text = "//h/" + *insertedAnywhere(iriReferences(), slips);
    const std::string broken = *insertedAnywhere(rc::gen::just(text.substr(4)), defects);
    RC_ASSERT(iri::repair(text).has_value());
    RC_ASSERT(iri::repair("//h/" + broken).has_value());
}

RC_GTEST_PROP(IRIAgreement, onDefectsAtEveryPlace, ())
{
    const std::string text = *iriReferences();
    const std::string defect = *rc::gen::elementOf(defects);
    for (std::size_t at = 0; at <= text.size(); ++at)
        RC_ASSERT(difference(std::string(text).insert(at, defect)) == "");
    for (std::size_t length = 0; length < text.size(); ++length)
        RC_ASSERT(difference(text.substr(0, length)) == "");
}

} // namespace foundation::network
