#include "build/BagGenerator.hpp"
#include "build/BagTesting.hpp"
#include "build/TwinBag.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

// Generated sequences of calls of all kinds on a bag, against a naive one.
namespace foundation::network::tests {
namespace {

    class Program {
    public:
        Program(BagGenerator& generator, Outcomes& outcomes)
            : generator_(generator)
            , outcomes_(outcomes)
        {
        }

        /// Makes some calls, and builds what they lead to.
        testing::AssertionResult run(Depth depth)
        {
            for (std::uint32_t count = generator_.below(10); count > 0; --count)
                if (auto result = step(); !result)
                    return result << " after" << calls_;
            return buildAlike(bag_, depth, outcomes_) << " after" << calls_;
        }

    private:
        testing::AssertionResult step()
        {
            switch (generator_.below(12)) {
            case 0:
            case 1:
                return setUtf32();
            case 2:
            case 3:
                return setOtherText();
            case 4:
                return clear();
            case 5:
                return setPort();
            case 6:
                return setPortText();
            case 7:
            case 8:
                return append();
            case 9:
                return takeFromIri();
            case 10:
                return copy();
            default:
                return takeFromBuilt();
            }
        }

        Base& base() { return bag_.library; }

        bool atBase()
        {
            const bool result = generator_.oneIn(2);
            calls_ += result ? " base" : "";
            return result;
        }

        Field field() { return static_cast<Field>(generator_.below(fieldCount)); }

        template <class Ours, class Theirs>
        testing::AssertionResult both(const std::string& call, Ours ours, Theirs theirs)
        {
            calls_ += " " + call;
            return failAlike(ours, theirs, outcomes_);
        }

        testing::AssertionResult setUtf32()
        {
            const Field which = field();
            calls_ += " set " + std::to_string(which);
            bag_.set(which, generator_.textFor(which));
            return testing::AssertionSuccess();
        }

        testing::AssertionResult setOtherText()
        {
            const Field which = field();
            const TextComponent& operations = textComponents[which];
            const bool atBase = this->atBase();
            const std::string call = "text " + std::to_string(which);
            const std::string utf8 = generator_.utf8(which);
            if (generator_.oneIn(3)) {
                const std::u16string utf16 = generator_.utf16(which);
                return both(
                    call + " UTF-16",
                    [&] {
                        if (atBase)
                            (base().*operations.setBaseUtf16)(utf16);
                        else
                            (bag_.library.*operations.setUtf16)(utf16);
                    },
                    [&] { bag_.naive.set(which, utf16); });
            }
            if (generator_.oneIn(3) && utf8.size() >= 2) { // a list cannot be made of any length
                const std::initializer_list<char> list = {utf8[0], utf8[1]};
                return both(
                    call + " list",
                    [&] {
                        if (atBase)
                            (base().*operations.setBaseList)(list);
                        else
                            (bag_.library.*operations.setList)(list);
                    },
                    [&] { bag_.naive.set(which, std::string(list)); });
            }
            return both(
                call + " UTF-8",
                [&] {
                    if (atBase)
                        (base().*operations.setBaseUtf8)(utf8);
                    else
                        (bag_.library.*operations.setUtf8)(utf8);
                },
                [&] { bag_.naive.set(which, utf8); });
        }

        testing::AssertionResult clear()
        {
            const std::uint32_t which = generator_.below(fieldCount + 1);
            const bool atBase = this->atBase();
            if (which == fieldCount)
                return both(
                    "clear port",
                    [&] { atBase ? base().clearPort() : void(bag_.library.clearPort()); },
                    [&] { bag_.naive.clearPort(); });
            const TextComponent& operations = textComponents[which];
            return both(
                "clear " + std::to_string(which),
                [&] {
                    if (atBase)
                        (base().*operations.clearBase)();
                    else
                        (bag_.library.*operations.clear)();
                },
                [&] {
                    bag_.naive.clear(static_cast<Field>(which),
                                     atBase ? Level::ArgsBase : Level::IRIArgs);
                });
        }

        testing::AssertionResult setPort()
        {
            const auto number = static_cast<unsigned short>(generator_.below(65536));
            const bool atBase = this->atBase();
            return both(
                "port",
                [&] { atBase ? base().setPort(number) : void(bag_.library.setPort(number)); },
                [&] { bag_.naive.setPort(number); });
        }

        testing::AssertionResult setPortText()
        {
            const bool atBase = this->atBase();
            if (generator_.oneIn(12)) {
                const std::u16string broken = {u'8', 0xDC00};
                return both(
                    "port that does not convert", [&] { bag_.library.setPort(broken); },
                    [&] { bag_.naive.setPort(broken); });
            }
            const Text digits = generator_.digits();
            const std::string call = "port " + toUtf8(digits);
            switch (generator_.below(3)) {
            case 0:
                return both(
                    call, [&] { base().setPort(digits); }, [&] { bag_.naive.setPort(digits); });
            case 1: {
                const std::string utf8 = toUtf8(digits);
                return both(
                    call, [&] { atBase ? base().setPort(utf8) : void(bag_.library.setPort(utf8)); },
                    [&] { bag_.naive.setPort(utf8); });
            }
            default: {
                const std::u16string utf16 = toUtf16(digits);
                return both(
                    call,
                    [&] { atBase ? base().setPort(utf16) : void(bag_.library.setPort(utf16)); },
                    [&] { bag_.naive.setPort(utf16); });
            }
            }
        }

        template <class String>
        testing::AssertionResult append(const String& key, const String& value)
        {
            const bool atBase = this->atBase();
            const bool formEncoded = generator_.oneIn(2), semicolonSeparator = generator_.oneIn(2);
            return both(
                "append",
                [&] {
                    if (atBase)
                        base().appendQueryKeyValuePair(key, value, formEncoded, semicolonSeparator);
                    else
                        bag_.library.appendQueryKeyValuePair(key, value, formEncoded,
                                                             semicolonSeparator);
                },
                [&] { bag_.naive.append(key, value, formEncoded, semicolonSeparator); });
        }

        testing::AssertionResult append()
        {
            if (generator_.oneIn(2)) {
                const std::string key = generator_.utf8(QUERY);
                return append(key, generator_.utf8(QUERY));
            }
            const std::u16string key = generator_.utf16(QUERY);
            return append(key, generator_.utf16(QUERY));
        }

        testing::AssertionResult takeFromIri()
        {
            const std::string text = generator_.iri();
            const IRI iri(text);
            return both(
                "take " + text, [&] { iri.toArgs(bag_.library); },
                [&] { takeApart(text).toBag(bag_.naive); });
        }

        // What the bag builds now goes into another one, or back into the same.
        testing::AssertionResult takeFromBuilt()
        {
            std::optional<IRI> value;
            std::optional<NaiveBuilt> naive;
            const auto result = both(
                "build", [&] { value.emplace(bag_.library); }, [&] { naive.emplace(bag_.naive); });
            if (!result || !value)
                return result;
            if (generator_.oneIn(2)) {
                calls_ += " anew";
                bag_.library = IRIArgs();
                bag_.naive = NaiveBag();
            }
            return both(
                "take", [&] { value->toArgs(bag_.library); },
                [&] { naive->components().toBag(bag_.naive); });
        }

        testing::AssertionResult copy()
        {
            calls_ += " copy";
            const IRIArgs copied(bag_.library);
            IRIArgs moved(std::move(bag_.library)); // which leaves the source as it was
            if (generator_.oneIn(2))
                bag_.library = copied;
            else if (generator_.oneIn(2))
                bag_.library = std::move(moved);
            return testing::AssertionSuccess();
        }

        BagGenerator& generator_;
        Outcomes& outcomes_;
        TwinBag bag_;
        std::string calls_;
    };

    TEST(BagPrograms, leaveABagThatBuildsWhatTheNaiveOneDoes)
    {
        constexpr std::uint32_t SEED = 3132;
        BagGenerator generator(SEED);
        Outcomes outcomes;
        const std::size_t cases = caseCount(100000);
        for (std::size_t i = 0; i < cases; ++i)
            ASSERT_TRUE(
                Program(generator, outcomes).run(i % 4 == 0 ? Depth::TEXTS : Depth::ONE_TEXT))
                << ", seed " << SEED << ", case " << i;
        for (const char* outcome :
             {"done", "a text", "Malformed scheme", "User Info requires a host",
              "Port requires a host", "Path cannot be relative if aut", "Port must be numeric",
              "Key must not be empty", "Invalid UTF-8 sequence encount",
              "Misplaced UTF-16 surrogate U+0", "Invalid UTF-32 code point U+0x"})
            EXPECT_GT(outcomes[outcome], caseCount(100)) << outcome;
    }

} // namespace
} // namespace foundation::network::tests
