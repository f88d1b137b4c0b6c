// Whatever takes a text in takes the same texts as the constructor and makes the same of them: on
// all short texts over small alphabets, on texts one slip away from an IRI, and on broken encodings.

#include <foundation/network/IRI.hpp>
#include <foundation/network/iri/Diagnosis.hpp>

#include "iri/Agreement.hpp"
#include "iri/IriGenerator.hpp"
#include "iri/NaiveIri.hpp"
#include "iri/ShortTexts.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace foundation::network {

namespace {

    using namespace tests;

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

// If there is little time, without those in the midst of a block, which are all alike.
TEST(IRIAgreement, onEveryCodePoint)
{
    const bool leavesOut = hasLittleTime();
    for (char32_t c = 0; c < 0x110000; ++c) {
        if (c >= 0x20000 && c < 0xE0000 && (c & 0xFFFF) > 0x20 && (c & 0xFFFF) < 0xFFF0)
            continue;
        if (leavesOut && c >= 0x3000 && (c & 0xFFFF) < 0xFD00 && (c & 0xFF) > 2
            && (c & 0xFF) < 0xFE)
            continue;
        std::u16string wide;
        if (c < 0x10000)
            wide = {static_cast<char16_t>(c)};
        else
            wide = {static_cast<char16_t>(0xD7C0 + (c >> 10)),
                    static_cast<char16_t>(0xDC00 + (c & 0x3FF))};
        for (const std::u16string& text : {wide + u":", u"//" + wide + u"@", u"//" + wide,
                                           u"//h:" + wide, wide, u"?" + wide, u"#" + wide}) {
            expectAgreement(text);
            if (const std::optional<IRI> value = IRI::tryParse(text))
                expectAgreement(value->toStringUtf8());
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
