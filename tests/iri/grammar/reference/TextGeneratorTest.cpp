#include "TextGenerator.hpp"

#include "SpiritGrammars.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace reference {

namespace {

    TEST(TextGenerator, repeatsItself)
    {
        TextGenerator first(7);
        TextGenerator again(7);
        TextGenerator other(8);
        bool differs = false;
        for (int i = 0; i < 100; ++i) {
            const std::u32string text = first.reference();
            EXPECT_EQ(text, again.reference());
            differs = differs || text != other.reference();
        }
        EXPECT_TRUE(differs);
    }

    TEST(TextGenerator, staysNearTheBordersOfTheGrammars)
    {
        constexpr int count = 20'000;
        TextGenerator generator(1);
        int references = 0;
        int addresses = 0;
        int splittable = 0;
        int ports = 0;
        int schemes = 0;
        for (int i = 0; i < count; ++i) {
            const std::u32string text = generator.reference();
            ReferenceParts parts;
            references += parseIriReference(text, parts).consumed == text.size();
            addresses += parts.host && parts.host->begin < parts.host->end
                         && text[parts.host->begin] == U'[';

            std::vector<std::u32string> segments;
            splittable += splitPathSegments(generator.path(), segments);

            std::uint16_t number = 0;
            const std::u32string port = generator.port();
            ports += parsePort(port, number) == Match{true, port.size()};

            const std::u32string scheme = generator.scheme();
            schemes += parseScheme(scheme) == Match{true, scheme.size()};
        }
        // Refused texts are as welcome as accepted ones; an address needs both of its brackets.
        for (const int accepted : {references, splittable, ports, schemes}) {
            EXPECT_LT(count / 5, accepted);
            EXPECT_GT(count * 19 / 20, accepted);
        }
        EXPECT_LT(count / 50, addresses);
    }

} // namespace

} // namespace reference
