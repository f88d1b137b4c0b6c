#include "bulk/Fields.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace {

using tool::bulk::FieldReader;
using tool::bulk::Template;

/// What a template gives for an IRI; nothing if a field cannot be decoded.
std::optional<std::string> filled(std::string_view pattern, std::string_view iri)
{
    std::string why;
    const auto read = Template::read(pattern, why);
    EXPECT_TRUE(read) << pattern << ": " << why;
    const auto view = tool::bulk::viewOf(iri);
    EXPECT_TRUE(view) << iri;
    if (!read || !view)
        return std::nullopt;
    FieldReader reader(*view);
    std::string result;
    return read->append(result, reader) ? std::optional(result) : std::nullopt;
}

TEST(Template, IsFilled)
{
    using namespace std::string_literals;
    constexpr std::string_view IRI = "http://é%41@h:080/a%20b?q=%D0%B4#f";
    const struct {
        std::string_view pattern;
        std::string expected;
    } CASES[] = {
        {"", ""},
        {"x", "x"},
        {"{iri}", std::string(IRI)},
        {"{scheme}|{authority}|{userInfo}|{host}", "http|é%41@h:080|é%41|h"},
        {"{port} {portNumber} {path} {query} {fragment}", "080 80 /a%20b q=%D0%B4 f"},
        {"{user-info} {port-number}", "é%41 80"},
        {"{path:decoded}{query:decoded}{user-info:decoded}", "/a bq=дéA"},
        {"{userInfo:ascii}{authority:ascii}", "%C3%A9%41%C3%A9%41@h:080"},
        {"{iri:ascii}", "http://%C3%A9%41@h:080/a%20b?q=%D0%B4#f"},
        {"{{{host}}}", "{h}"},
        {"{{}}", "{}"},
        {R"(a\tb\nc\\d\0e)", "a\tb\nc\\d\0e"s},
    };
    for (const auto& [pattern, expected] : CASES)
        EXPECT_EQ(filled(pattern, IRI), expected) << pattern;
    EXPECT_EQ(filled("{host}{port}{query}{fragment}{scheme}-{path}", "a"), "-a");
}

TEST(Template, FailsWhereAFieldCannotBeDecoded)
{
    EXPECT_EQ(filled("{path:decoded}", "/%C0%80"), std::nullopt);
    EXPECT_EQ(filled("{path}", "/%C0%80"), "/%C0%80");
}

TEST(Template, TellsWhatIsWrongWithIt)
{
    const std::string FIELDS = "; there are iri, scheme, authority, userInfo, host, port, "
                               "portNumber, path, query, fragment";
    const struct {
        std::string_view pattern;
        std::string why;
    } CASES[] = {
        {"{", R"(a "{" that does not end; write "{{" for a brace)"},
        {"a{host", R"(a "{" that does not end; write "{{" for a brace)"},
        {"a}", R"(a "}" that ends nothing; write "}}" for a brace)"},
        {"{host}}", R"(a "}" that ends nothing; write "}}" for a brace)"},
        {"{}", "no such field: " + FIELDS},
        {"{hots}", "no such field: hots" + FIELDS + "; did you mean host?"},
        {"{Host }", "no such field: Host " + FIELDS + "; did you mean host?"},
        {"{host:acsii}", "no such field: host:acsii; a form is iri, iri-strict, ascii, "
                         "ascii-strict, decoded; did you mean ascii?"},
        {"{iri:decoded}", "no such field: iri:decoded; a form of the whole is iri, iri-strict, "
                          "ascii, ascii-strict"},
        {"\\", R"("\" is followed by t, n, 0 or another "\")"},
        {"\\x", R"("\" is followed by t, n, 0 or another "\")"},
    };
    for (const auto& [pattern, expected] : CASES) {
        std::string why;
        EXPECT_FALSE(Template::read(pattern, why)) << pattern;
        EXPECT_EQ(why, expected) << pattern;
    }
}

} // namespace
