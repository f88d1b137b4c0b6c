// ICU fails here when it is told to: this program has its own way to make an icu::IDNA.

#include <foundation/core/except/Exception.hpp>
#include <foundation/network/IdnConverter.hpp>

#include "text/Failure.hpp"

#include <gtest/gtest.h>
#include <unicode/idna.h>

#include <cstdint>
#include <exception>
#include <optional>
#include <string>

namespace {

std::uint32_t optionsSeen = 0;
int living = 0;
UErrorCode onMaking = U_ZERO_ERROR;
UErrorCode onConverting = U_ZERO_ERROR;

// Puts a letter behind the name, by which it is seen who was asked.
class InventedIdna : public icu::IDNA {
public:
    InventedIdna() { ++living; }
    ~InventedIdna() override { --living; }
    InventedIdna(const InventedIdna&) = delete;
    InventedIdna& operator=(const InventedIdna&) = delete;

    icu::UnicodeString& labelToASCII(const icu::UnicodeString&, icu::UnicodeString& result,
                                     icu::IDNAInfo&, UErrorCode& code) const override
    {
        return answer(u"?", u'l', result, code);
    }
    icu::UnicodeString& labelToUnicode(const icu::UnicodeString&, icu::UnicodeString& result,
                                       icu::IDNAInfo&, UErrorCode& code) const override
    {
        return answer(u"?", u'L', result, code);
    }
    icu::UnicodeString& nameToASCII(const icu::UnicodeString& name, icu::UnicodeString& result,
                                    icu::IDNAInfo&, UErrorCode& code) const override
    {
        return answer(name, u'a', result, code);
    }
    icu::UnicodeString& nameToUnicode(const icu::UnicodeString& name, icu::UnicodeString& result,
                                      icu::IDNAInfo&, UErrorCode& code) const override
    {
        return answer(name, u'u', result, code);
    }

private:
    static icu::UnicodeString& answer(const icu::UnicodeString& name, char16_t mark,
                                      icu::UnicodeString& result, UErrorCode& code)
    {
        result = name;
        result.append(mark);
        code = onConverting;
        return result;
    }
};

} // namespace

icu::IDNA* icu::IDNA::createUTS46Instance(std::uint32_t options, UErrorCode& code)
{
    optionsSeen = options;
    code = onMaking;
    return U_FAILURE(code) ? nullptr : new InventedIdna;
}

namespace foundation::network {
namespace {

    using namespace tests;

    class IdnConverterFailure : public testing::Test {
    public:
        IdnConverterFailure()
        {
            onMaking = U_ZERO_ERROR;
            onConverting = U_ZERO_ERROR;
        }
        ~IdnConverterFailure() override { EXPECT_EQ(living, 0); }
        IdnConverterFailure(const IdnConverterFailure&) = delete;
        IdnConverterFailure& operator=(const IdnConverterFailure&) = delete;
    };

    Failure named(const char* error)
    {
        return {typeid(IdnConverterException), error};
    }

    TEST_F(IdnConverterFailure, isNamedByIcuWhenAConverterCannotBeMade)
    {
        onMaking = U_MEMORY_ALLOCATION_ERROR;
        const Failure expected = named("U_MEMORY_ALLOCATION_ERROR");
        EXPECT_EQ(failureOf([] { IdnConverter converter; }), expected);
        EXPECT_EQ(failureOf([] { idn_to_ascii(u"a"); }), expected);
        EXPECT_EQ(failureOf([] { ascii_to_idn("a"); }), expected);
        onMaking = U_MISSING_RESOURCE_ERROR;
        EXPECT_EQ(failureOf([] { IdnConverter converter; }), named("U_MISSING_RESOURCE_ERROR"));
    }

    TEST_F(IdnConverterFailure, isNamedByIcuWhenANameCannotBeConverted)
    {
        const IdnConverter converter;
        const IdnConverter copy(converter); // NOLINT(performance-unnecessary-copy-initialization)
        for (const auto& [code, name] :
             {std::pair(U_MEMORY_ALLOCATION_ERROR, "U_MEMORY_ALLOCATION_ERROR"),
              std::pair(U_INDEX_OUTOFBOUNDS_ERROR, "U_INDEX_OUTOFBOUNDS_ERROR"),
              std::pair(U_ILLEGAL_ARGUMENT_ERROR, "U_ILLEGAL_ARGUMENT_ERROR")}) {
            onConverting = code;
            EXPECT_EQ(failureOf([&] { converter.toAscii(u"a"); }), named(name));
            EXPECT_EQ(failureOf([&] { converter.toUnicode("a"); }), named(name));
            EXPECT_EQ(failureOf([&] { copy.convert(u"a"); }), named(name));
            EXPECT_EQ(failureOf([&] { copy.convert(std::string("a")); }), named(name));
            EXPECT_EQ(failureOf([&] { idn_to_ascii(u"a"); }), named(name));
            EXPECT_EQ(failureOf([&] { ascii_to_idn("a"); }), named(name));
            // Afterwards they are what they were.
            onConverting = U_ZERO_ERROR;
            EXPECT_EQ(converter.toAscii(u"a"), "aa");
            EXPECT_EQ(copy.toUnicode("a"), u"au");
        }
    }

    TEST_F(IdnConverterFailure, isNoWarning)
    {
        onMaking = U_USING_DEFAULT_WARNING;
        onConverting = U_STRING_NOT_TERMINATED_WARNING;
        EXPECT_EQ(idn_to_ascii(u"name"), "namea");
        EXPECT_EQ(ascii_to_idn("name"), u"nameu");
    }

    TEST_F(IdnConverterFailure, isOutsideTheFamily)
    {
        onMaking = U_MEMORY_ALLOCATION_ERROR;
        EXPECT_THROW(IdnConverter(), std::exception);
        const auto isTakenBy = [](auto handler) {
            using Handler = decltype(handler);
            try {
                IdnConverter converter;
            } catch (const std::remove_pointer_t<Handler>&) {
                return true;
            } catch (const std::exception&) {
                return false;
            }
            return false;
        };
        using Family = const core::except::IInternalException*;
        EXPECT_FALSE(isTakenBy(Family()));
        EXPECT_FALSE(isTakenBy(static_cast<const boost::exception*>(nullptr)));
        EXPECT_FALSE(isTakenBy(static_cast<const std::runtime_error*>(nullptr)));
        EXPECT_TRUE(isTakenBy(static_cast<const IdnConverterException*>(nullptr)));
    }

    // Both directions non-transitional; no STD3, bidi, joiner or context rules.
    TEST_F(IdnConverterFailure, optionsAreTheTwoOfNonTransitionalProcessing)
    {
        const IdnConverter converter;
        EXPECT_EQ(optionsSeen, 0x30U);
    }

    TEST_F(IdnConverterFailure, instancesAreSharedAndFreed)
    {
        std::optional<IdnConverter> first(std::in_place);
        EXPECT_EQ(living, 1);
        std::optional<IdnConverter> second(*first);
        EXPECT_EQ(living, 1);
        IdnConverter third;
        EXPECT_EQ(living, 2);
        third = *first;
        EXPECT_EQ(living, 1);
        idn_to_ascii(u"a"); // has one of its own, for as long as it takes
        EXPECT_EQ(living, 1);
        first.reset();
        second.reset();
        EXPECT_EQ(living, 1);
        EXPECT_EQ(third.toAscii(u"a"), "aa");
    }

} // namespace
} // namespace foundation::network
