#include "StringPartsTesting.hpp"

#include <stdexcept>

namespace foundation::network::iri::test {
namespace {

    TEST(StringParts, areEmptyAtFirst)
    {
        const Parts parts;
        EXPECT_TRUE(parts.isEmpty());
        for (const Component& component : components)
            for (const Encoding encoding : encodings)
                expectNotSet(parts, component, encoding);
    }

    TEST(StringParts, nameAnAbsentComponentInTheFailure)
    {
        const Parts parts;
        expectRuntimeError([&] { parts.getUserInfo(Encoding::Iri); }, "Item not set: UserInfo");
        expectRuntimeError([&] { parts.getHost(Encoding::Iri); }, "Item not set: Host");
        expectRuntimeError([&] { parts.getPath(Encoding::Iri); }, "Item not set: Path");
        expectRuntimeError([&] { parts.getQuery(Encoding::Iri); }, "Item not set: Query");
        expectRuntimeError([&] { parts.getFragment(Encoding::Iri); }, "Item not set: Fragment");
        expectRuntimeError([&] { parts.getAuthority(Encoding::Iri); },
                           "Item not set: Host: Host (in getAuthority)");
    }

    TEST(StringParts, readAStoredTextInItsOwnFormAsItCame)
    {
        // Nothing that could be converted is touched, not even what no IRI may hold.
        const std::u32string text = U"a%zz %41%e9<\u00E9\uE000\U0010FFFF";
        for (const Component& component : components) {
            for (const Encoding stored : settableEncodings) {
                SCOPED_TRACE(component.name);
                Parts parts;
                component.set(parts, text, stored);
                EXPECT_EQ(component.get(parts, stored), text);
            }
        }
    }

    // Which readers see the same form.
    TEST(StringParts, readStrictFormsAsPlainOnesAndHigherValuesAsAscii)
    {
        for (const Component& component : components) {
            SCOPED_TRACE(component.name);
            Parts parts;
            component.set(parts, U"\u00E9%", Encoding::Iri);
            const std::u32string& iri = component.get(parts, Encoding::Iri);
            const std::u32string& ascii = component.get(parts, Encoding::Ascii);
            EXPECT_EQ(iri, U"\u00E9%");
            EXPECT_EQ(ascii, U"%C3%A9%"); // nothing is repaired here
            EXPECT_EQ(&component.get(parts, Encoding::IriStrict), &iri);
            EXPECT_EQ(&component.get(parts, Encoding::AsciiStrict), &ascii);
            EXPECT_EQ(&component.get(parts, Encoding{5}), &ascii);
            EXPECT_EQ(&component.get(parts, Encoding{0xFFFFFFFF}), &ascii);
            EXPECT_EQ(component.get(parts, Encoding::Decoded), U"\u00E9%");
        }
    }

    struct Conversion {
        Encoding stored;
        const char32_t* decoded;
        const char32_t* iri;
        const char32_t* ascii;
    };
    // The stored form stays as it was written; the others come from it.
    constexpr Conversion fragments[] = {
        {Encoding::Decoded, U"a b\u00E9", U"a%20b\u00E9", U"a%20b%C3%A9"},
        {Encoding::Iri, U"a b\u00E9", U"a%20b\u00E9", U"a%20b%C3%A9"},
        {Encoding::IriStrict, U"\u00E9", U"%c3%a9", U"%c3%a9"},
        {Encoding::Ascii, U"a b\u00E9", U"a%20b\u00E9", U"a%20b%C3%A9"},
        {Encoding::AsciiStrict, U"a b\u00E9", U"a%20b\u00E9", U"a%20b%c3%a9"},
        {Encoding::Decoded, U"%41", U"%2541", U"%2541"},
        {Encoding::Iri, U"\u00E9", U"%E9", U"%E9"},
    };

    TEST(StringParts, makeTheOtherFormsOnDemand)
    {
        for (const Conversion& row : fragments) {
            SCOPED_TRACE(testing::PrintToString(std::u32string(row.iri)));
            Parts parts;
            parts.setFragment(row.stored == Encoding::Decoded ? row.decoded
                              : row.stored < Encoding::Ascii  ? row.iri
                                                              : row.ascii,
                              row.stored);
            EXPECT_EQ(parts.getFragment(Encoding::Decoded), row.decoded);
            EXPECT_EQ(parts.getFragment(Encoding::Iri), row.iri);
            EXPECT_EQ(parts.getFragment(Encoding::Ascii), row.ascii);
        }
    }

    TEST(StringParts, useEachComponentsOwnCoder)
    {
        Parts parts;
        parts.setUserInfo(U"a=:", Encoding::Decoded);
        parts.setHost(U"a=:", Encoding::Decoded);
        parts.setPath(U"/a=:]", Encoding::Decoded);
        parts.setQuery(U"a=?]", Encoding::Decoded, false);
        parts.setFragment(U"a#]", Encoding::Decoded);
        EXPECT_EQ(parts.getUserInfo(Encoding::Iri), U"a%3D:");
        EXPECT_EQ(parts.getHost(Encoding::Iri), U"a=%3A");
        EXPECT_EQ(parts.getPath(Encoding::Iri), U"/a=:%5D");
        EXPECT_EQ(parts.getQuery(Encoding::Iri), U"a=?]");
        EXPECT_EQ(parts.getFragment(Encoding::Iri), U"a#]");
    }

    TEST(StringParts, shareTheTextOfFormsThatAreEqual)
    {
        for (const Component& component : components) {
            for (const Encoding stored : settableEncodings) {
                SCOPED_TRACE(component.name);
                Parts parts;
                component.set(parts, U"plain", stored);
                const std::u32string* decoded = &component.get(parts, Encoding::Decoded);
                EXPECT_EQ(*decoded, U"plain");
                EXPECT_EQ(&component.get(parts, Encoding::Ascii), decoded);
                EXPECT_EQ(&component.get(parts, Encoding::Iri), decoded);
            }
        }
    }

    TEST(StringParts, leaveATextWhereItWasHandedOut)
    {
        Parts parts;
        parts.setFragment(U"a b\u00E9", Encoding::Decoded);
        const std::u32string& decoded = parts.getFragment(Encoding::Decoded);
        const std::u32string& iri = parts.getFragment(Encoding::Iri);
        const std::u32string& ascii = parts.getFragment(Encoding::Ascii);
        parts.setHost(U"h", Encoding::Iri); // other components are none of its business
        parts.setPath(U"/p", Encoding::Iri);
        EXPECT_EQ(&parts.getFragment(Encoding::Decoded), &decoded);
        EXPECT_EQ(&parts.getFragment(Encoding::Iri), &iri);
        EXPECT_EQ(&parts.getFragment(Encoding::Ascii), &ascii);
        EXPECT_EQ(decoded, U"a b\u00E9");
        EXPECT_EQ(iri, U"a%20b\u00E9");
        EXPECT_EQ(ascii, U"a%20b%C3%A9");
    }

    TEST(StringParts, replaceAComponentWhole)
    {
        for (const Component& component : components) {
            SCOPED_TRACE(component.name);
            Parts parts;
            component.set(parts, U"old\u00E9", Encoding::Decoded);
            component.get(parts, Encoding::Iri);
            component.get(parts, Encoding::Ascii);
            component.set(parts, U"%C3%A9", Encoding::Ascii);
            EXPECT_EQ(component.get(parts, Encoding::Ascii), U"%C3%A9");
            EXPECT_EQ(component.get(parts, Encoding::Iri), U"\u00E9");
            EXPECT_EQ(component.get(parts, Encoding::Decoded), U"\u00E9");
        }
    }

    // A component may be set to its own text.
    TEST(StringParts, takeTextsByValue)
    {
        Parts parts;
        parts.setHost(U"h\u00E9", Encoding::Iri);
        parts.setHost(parts.getHost(Encoding::Ascii), Encoding::Ascii);
        EXPECT_EQ(parts.getHost(Encoding::Ascii), U"h%C3%A9");
        EXPECT_EQ(parts.getHost(Encoding::Iri), U"h\u00E9");
    }

    TEST(StringParts, areNoLongerEmptyOnceAComponentIsSet)
    {
        for (const Component& component : components) {
            for (const char32_t* text : {U"", U"x"}) {
                for (const Encoding encoding : encodings) {
                    SCOPED_TRACE(component.name);
                    Parts parts;
                    component.set(parts, text, encoding);
                    const bool emptyPath = component.isPath() && *text == U'\0';
                    EXPECT_EQ(parts.isEmpty(), emptyPath);
                    component.set(parts, U"", encoding); // nothing goes back but by reset
                    EXPECT_EQ(parts.isEmpty(), emptyPath);
                }
            }
        }
    }

    TEST(StringParts, readAnEmptyPathWithoutCounting)
    {
        for (const Encoding stored : settableEncodings) {
            Parts parts;
            parts.setPath(U"", stored);
            EXPECT_TRUE(parts.isEmpty());
            for (const Encoding encoding : encodings)
                EXPECT_EQ(parts.getPath(encoding), U"");
        }
    }

    TEST(StringParts, holdAComponentWithoutATextUnderAnUnknownEncoding)
    {
        for (const Component& component : components) {
            for (const Encoding unknown : {Encoding{5}, Encoding{6}, Encoding{0xFFFFFFFF}}) {
                SCOPED_TRACE(component.name);
                Parts parts;
                component.set(parts, U"x", Encoding::Iri); // what was there goes
                component.set(parts, U"y", unknown);
                EXPECT_FALSE(parts.isEmpty());
                for (const Encoding encoding : encodings)
                    expectNotSet(parts, component, encoding);
                component.set(parts, U"z", Encoding::Iri);
                EXPECT_EQ(component.get(parts, Encoding::Iri), U"z");
            }
        }
    }

    TEST(StringParts, giveTheAuthorityOfUserInformationAndHost)
    {
        Parts parts;
        parts.setHost(U"h\u00E9", Encoding::Iri);
        EXPECT_EQ(parts.getAuthority(Encoding::Iri), U"h\u00E9");
        parts.setUserInfo(U"", Encoding::Iri); // empty is not absent
        EXPECT_EQ(parts.getAuthority(Encoding::Iri), U"@h\u00E9");
        parts.setUserInfo(U"u p", Encoding::Decoded);
        EXPECT_EQ(parts.getAuthority(Encoding::Decoded), U"u p@h\u00E9");
        EXPECT_EQ(parts.getAuthority(Encoding::Iri), U"u%20p@h\u00E9");
        EXPECT_EQ(parts.getAuthority(Encoding::IriStrict), U"u%20p@h\u00E9");
        EXPECT_EQ(parts.getAuthority(Encoding::Ascii), U"u%20p@h%C3%A9");
        EXPECT_EQ(parts.getAuthority(Encoding{7}), U"u%20p@h%C3%A9");
        parts.setHost(U"", Encoding::Iri);
        EXPECT_EQ(parts.getAuthority(Encoding::Iri), U"u%20p@");
    }

    TEST(StringParts, giveNoAuthorityWithoutAHost)
    {
        constexpr const char* WITHOUT_HOST = "Item not set: Host: Host (in getAuthority)";
        Parts parts;
        parts.setUserInfo(U"u", Encoding::Iri);
        expectRuntimeError([&] { parts.getAuthority(Encoding::Iri); }, WITHOUT_HOST);
        parts.setHost(U"h", Encoding{5}); // present without a text
        expectRuntimeError([&] { parts.getAuthority(Encoding::Iri); }, WITHOUT_HOST);
        // The user information comes first and is not wrapped by the host's words.
        parts.setUserInfo(U"u", Encoding{5});
        expectRuntimeError([&] { parts.getAuthority(Encoding::Iri); }, "Item not set: UserInfo");
        parts.setHost(U"h", Encoding::Iri);
        expectRuntimeError([&] { parts.getAuthority(Encoding::Iri); }, "Item not set: UserInfo");
    }

    // Failures of the transcoders pass as they are: they are no std::runtime_error.
    TEST(StringParts, passFailuresOfConversionsUnchanged)
    {
        constexpr const char* BAD_UTF8 =
            "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character";
        constexpr const char* BAD_UTF32 = "Invalid UTF-32 code point U+0x110000 encountered while "
                                          "trying to encode UTF-16 sequence";
        for (const Component& component : components) {
            SCOPED_TRACE(component.name);
            Parts parts;
            component.set(parts, U"%C0%80", Encoding::Iri);
            for (int attempt = 0; attempt < 2; ++attempt) // the next read tries again
                expectFailure<std::exception>([&] { component.get(parts, Encoding::Decoded); },
                                              BAD_UTF8);
            EXPECT_EQ(component.get(parts, Encoding::Ascii), U"%C0%80");

            for (const char32_t surrogate : {0xD800U, 0xD801U, 0xDFFEU, 0xDFFFU}) {
                component.set(parts, {U'a', surrogate}, Encoding::Iri);
                expectFailure<std::exception>([&] { component.get(parts, Encoding::Decoded); },
                                              BAD_UTF8);
            }

            component.set(parts, {U'/', 0x110000}, Encoding::Iri);
            for (int attempt = 0; attempt < 2; ++attempt)
                expectFailure<std::out_of_range>([&] { component.get(parts, Encoding::Ascii); },
                                                 BAD_UTF32);
            EXPECT_EQ(component.get(parts, Encoding::Iri), (std::u32string{U'/', 0x110000}));
        }
        Parts parts;
        parts.setUserInfo(U"u", Encoding::Iri);
        parts.setHost(U"%C0%80", Encoding::Iri);
        expectFailure<std::exception>([&] { parts.getAuthority(Encoding::Decoded); }, BAD_UTF8);
        EXPECT_EQ(parts.getAuthority(Encoding::Iri), U"u@%C0%80");
    }

    TEST(StringParts, giveAnEmptyTextForWhatCannotBeDecoded)
    {
        Parts parts;
        parts.setFragment({U'a', 0x110000}, Encoding::Ascii); // the decoder stops before its end
        EXPECT_EQ(parts.getFragment(Encoding::Iri), U"");
        EXPECT_EQ(parts.getFragment(Encoding::Ascii), (std::u32string{U'a', 0x110000}));
        EXPECT_EQ(parts.getFragment(Encoding::Decoded), U"");
    }

} // namespace
} // namespace foundation::network::iri::test
