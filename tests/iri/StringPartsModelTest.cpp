#include "NaiveStringParts.hpp"
#include "StringPartsTesting.hpp"

#include "reference/Cases.hpp"

#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <utility>

// Random programs of calls, run on StringParts and on the naive one beside it. The same ones each
// time; --gtest_random_seed=1 and so on gives others.
namespace foundation::network::iri::test {
namespace {

    /// Small random numbers and texts.
    class Dice {
    public:
        explicit Dice(std::uint32_t seed)
            : engine_(seed)
        {
        }

        std::size_t below(std::size_t limit) { return engine_() % limit; }
        bool once(std::size_t in) { return below(in) == 0; }

        template <class T, std::size_t COUNT>
        const T& from(const T (&choices)[COUNT])
        {
            return choices[below(COUNT)];
        }

        std::u32string text()
        {
            static const std::u32string pieces[] = {
                U"a",         U"b",   U":",   U"/",   U" ",   U"+",      U"=",      U"%41",
                U"%",         U"%2",  U"%25", U"5",   U"41",  U"%2541",  U"%E9",    U"%C3%A9",
                U"%c3",       U"%A9", U"%3A", U"%2F", U"%20", U"\u00E9", U"\uE000", U"|",
                U"\u200E",    U"<",   U"#",   U"[",   U"@",   U"?",      U"%00",    U"%F0%9F%98%80",
                U"\U0001F600"};
            static const std::u32string poison[] = {
                U"%C0%80", U"%ED%A0%80", U"%F8%88%80%80%80", {0x110000}, {0xD800}};
            std::u32string result;
            for (std::size_t count = below(5); count > 0; --count)
                result += once(60) ? from(poison) : from(pieces);
            return result;
        }

    private:
        std::mt19937 engine_;
    };

    constexpr naive::Component naiveComponents[] = {
        naive::Component::UserInfo, naive::Component::Host, naive::Component::Path,
        naive::Component::Query, naive::Component::Fragment};

    constexpr Encoding chosenEncodings[] = {
        Encoding::Decoded, Encoding::Decoded,     Encoding::Decoded, Encoding::Iri,
        Encoding::Iri,     Encoding::IriStrict,   Encoding::Ascii,   Encoding::Ascii,
        Encoding::Ascii,   Encoding::AsciiStrict, Encoding{5},       Encoding{0xFFFFFFFF}};

    constexpr Encoding encodingOfSlot[] = {Encoding::Iri, Encoding::Decoded, Encoding::Iri,
                                           Encoding::Ascii};

    /// What an operation gave: a result of one kind or the other, or its failure.
    struct Outcome {
        std::u32string text;
        bool truth = false;
        std::string failure;

        bool operator==(const Outcome&) const = default;

        friend std::ostream& operator<<(std::ostream& stream, const Outcome& outcome)
        {
            return stream << testing::PrintToString(outcome.text) << ' ' << outcome.truth << ' '
                          << outcome.failure;
        }
    };

    Outcome resultOf(const std::u32string& text)
    {
        return {text, false, {}};
    }

    Outcome resultOf(bool truth)
    {
        return {{}, truth, {}};
    }

    template <class Operation>
    Outcome outcome(Operation operation)
    {
        try {
            return resultOf(operation());
        } catch (const std::runtime_error& failure) {
            return {{}, false, std::string("runtime error: ") + failure.what()};
        } catch (const std::exception& failure) {
            return {{}, false, std::string("failure: ") + failure.what()};
        }
    }

    /// Some values, each of both kinds, and one program that works on them.
    class Program {
    public:
        explicit Program(std::uint32_t seed)
            : dice_(seed)
        {
            for (Value& value : values_)
                value = {std::make_unique<Parts>(), std::make_unique<naive::StringParts>()};
        }

        /// What was done, one call a line.
        std::string listing() const { return listing_.str(); }

        void run()
        {
            for (std::size_t steps = 5 + dice_.below(30); steps > 0; --steps) {
                step(dice_.below(3), dice_.below(3));
                if (testing::Test::HasFailure())
                    return;
            }
            for (std::size_t i = 0; i < std::size(values_); ++i)
                expectSame(i);
        }

    private:
        struct Value {
            std::unique_ptr<Parts> real;
            std::unique_ptr<naive::StringParts> model;
        };

        void step(std::size_t i, std::size_t j)
        {
            switch (dice_.below(24)) {
            case 0:
            case 1:
            case 2:
            case 3:
            case 4:
            case 5:
                return set(i);
            case 6:
            case 7:
            case 8:
            case 9:
            case 10:
                return get(i);
            case 11:
                return getAuthority(i);
            case 12:
            case 13:
                return setSchemePresent(i);
            case 14:
                note("reset", i) << '\n';
                values_[i].real->reset();
                values_[i].model->reset();
                return expectEmptiness(i);
            case 15:
                note("copy", i, j);
                values_[i] = {std::make_unique<Parts>(*values_[j].real),
                              std::make_unique<naive::StringParts>(*values_[j].model)};
                return expectEmptiness(i);
            case 16:
                note("move", i, j);
                values_[i] = {std::make_unique<Parts>(std::move(*values_[j].real)),
                              std::make_unique<naive::StringParts>(std::move(*values_[j].model))};
                return expectEmptiness(i);
            case 17:
                note("assign", i, j);
                *values_[i].real = *values_[j].real;
                *values_[i].model = *values_[j].model;
                return expectEmptiness(i);
            case 18:
                note("move-assign", i, j);
                *values_[i].real = std::move(*values_[j].real);
                *values_[i].model = std::move(*values_[j].model);
                return expectEmptiness(i);
            case 19:
                note("swap", i, j);
                values_[i].real->swap(*values_[j].real);
                values_[i].model->swap(*values_[j].model);
                return expectEmptiness(i);
            case 20:
            case 21:
                note("==", i, j);
                EXPECT_EQ(outcome([&] { return *values_[i].real == *values_[j].real; }),
                          outcome([&] { return values_[i].model->equals(*values_[j].model); }));
                return;
            case 22:
                note("!=", i, j);
                EXPECT_EQ(outcome([&] { return *values_[i].real != *values_[j].real; }),
                          outcome([&] { return values_[i].model->differs(*values_[j].model); }));
                return;
            default:
                return expectSharing(i);
            }
        }

        void set(std::size_t i)
        {
            const std::size_t which = dice_.below(std::size(components));
            const std::u32string text = dice_.text();
            const Encoding encoding = dice_.from(chosenEncodings);
            const bool formEncoded = dice_.once(2);
            note("set", i) << components[which].name << ' ' << testing::PrintToString(text) << ' '
                           << static_cast<std::uint32_t>(encoding) << ' ' << formEncoded << '\n';
            if (naiveComponents[which] == naive::Component::Query)
                values_[i].real->setQuery(text, encoding, formEncoded);
            else
                components[which].set(*values_[i].real, text, encoding);
            values_[i].model->set(naiveComponents[which], text, encoding, formEncoded);
            expectEmptiness(i);
        }

        void get(std::size_t i)
        {
            const std::size_t which = dice_.below(std::size(components));
            const Encoding encoding = dice_.from(chosenEncodings);
            note("get", i) << components[which].name << ' ' << static_cast<std::uint32_t>(encoding)
                           << '\n';
            expectSameText(i, which, encoding);
        }

        void getAuthority(std::size_t i)
        {
            const Encoding encoding = dice_.from(chosenEncodings);
            note("getAuthority", i) << static_cast<std::uint32_t>(encoding) << '\n';
            EXPECT_EQ(outcome([&] { return values_[i].real->getAuthority(encoding); }),
                      outcome([&] { return values_[i].model->getAuthority(encoding); }));
        }

        void setSchemePresent(std::size_t i)
        {
            const bool present = dice_.once(2);
            note("setSchemePresent", i) << present << '\n';
            values_[i].real->setSchemePresent(present);
            values_[i].model->setSchemePresent(present);
            expectEmptiness(i);
        }

        void expectSameText(std::size_t i, std::size_t which, Encoding encoding)
        {
            EXPECT_EQ(
                outcome([&] { return components[which].get(*values_[i].real, encoding); }),
                outcome([&] { return values_[i].model->get(naiveComponents[which], encoding); }));
        }

        void expectEmptiness(std::size_t i)
        {
            EXPECT_EQ(values_[i].real->isEmpty(), values_[i].model->isEmpty());
        }

        // Forms that were made have the same text object if and only if they share it. Forms that
        // were not made are not asked for: that would make them.
        void expectSharing(std::size_t i)
        {
            for (std::size_t which = 0; which < std::size(components); ++which) {
                std::map<naive::Slot, const std::u32string*> places;
                for (const naive::Slot slot : {naive::DECODED, naive::IRI, naive::ASCII}) {
                    const naive::Slot owner =
                        values_[i].model->ownerOf(naiveComponents[which], slot);
                    if (owner == naive::NONE)
                        continue;
                    const std::u32string* text =
                        &components[which].get(*values_[i].real, encodingOfSlot[slot]);
                    const auto [place, isFirst] = places.emplace(owner, text);
                    EXPECT_EQ(place->second, text) << components[which].name;
                }
                for (const auto& [owner, text] : places)
                    for (const auto& [otherOwner, otherText] : places)
                        EXPECT_EQ(owner == otherOwner, text == otherText);
            }
        }

        void expectSame(std::size_t i)
        {
            note("final state", i) << '\n';
            expectEmptiness(i);
            expectSharing(i);
            for (std::size_t which = 0; which < std::size(components); ++which) {
                expectSameText(i, which, Encoding::Decoded);
                if (hasText(i, which)) {
                    expectSameText(i, which, Encoding::Iri);
                    expectSameText(i, which, Encoding::Ascii);
                }
            }
            expectSharing(i);
        }

        bool hasText(std::size_t i, std::size_t which) const
        {
            const naive::StringParts& model = *values_[i].model;
            const naive::Component component = naiveComponents[which];
            return model.ownerOf(component, naive::DECODED) != naive::NONE
                   || model.ownerOf(component, naive::IRI) != naive::NONE
                   || model.ownerOf(component, naive::ASCII) != naive::NONE;
        }

        std::ostream& note(const char* operation, std::size_t i)
        {
            return listing_ << operation << ' ' << i << ' ';
        }
        void note(const char* operation, std::size_t i, std::size_t j)
        {
            note(operation, i) << j << '\n';
        }

        Dice dice_;
        Value values_[3];
        std::ostringstream listing_;
    };

    TEST(StringPartsModel, behavesAsTheNaiveOneInRandomPrograms)
    {
        constexpr std::uint32_t PROGRAMS = 50000;
        const auto block = GTEST_FLAG_GET(random_seed);
        const std::uint32_t first = 1 + static_cast<std::uint32_t>(block) * PROGRAMS;
        const auto end = first + static_cast<std::uint32_t>(tests::testCases() / 2);
        std::cout << "seeds " << first << " to " << end - 1 << '\n';
        for (std::uint32_t seed = first; seed < end; ++seed) {
            Program program(seed);
            program.run();
            ASSERT_FALSE(HasFailure()) << "seed " << seed << '\n' << program.listing();
        }
    }

} // namespace
} // namespace foundation::network::iri::test
