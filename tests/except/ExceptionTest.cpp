#include <foundation/core/except/Exception.hpp>

#include "except/Expected.hpp"
#include "except/Handlers.hpp"

#include <boost/exception/get_error_info.hpp>
#include <boost/exception/info.hpp>
#include <boost/exception_ptr.hpp>

#include <gtest/gtest.h>

#include <cerrno>
#include <exception>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <typeinfo>

namespace foundation::core::except {
namespace {

    using boost::exception_detail::clone_base;

    // Values of the five kinds, each with the text "text" in front.
    struct OfException {
        using Standard = std::exception;
        static std::logic_error make() { return std::logic_error("text"); }
        static tests::Names names() { return tests::namesForException(); }
    };
    struct OfLogicError {
        using Standard = std::logic_error;
        static Standard make() { return Standard("text"); }
        static tests::Names names() { return tests::namesForLogicError(); }
    };
    struct OfRuntimeError {
        using Standard = std::runtime_error;
        static Standard make() { return Standard("text"); }
        static tests::Names names() { return tests::namesForRuntimeError(); }
    };
    struct OfInvalidArgument {
        using Standard = std::invalid_argument;
        static Standard make() { return Standard("text"); }
        static tests::Names names() { return tests::namesForInvalidArgument(); }
    };
    struct OfSystemError {
        using Standard = std::system_error;
        static Standard make() { return {ENOENT, std::generic_category(), "text"}; }
        static tests::Names names() { return tests::namesForSystemError(); }
    };

    template <class Kind>
    class ExceptionFamily : public testing::Test {
    protected:
        using Standard = typename Kind::Standard;
        using Anonymous = AnonymousInternalException<Standard>;
        using Joined = Exception<IInternalException, Standard, void>;

        static Anonymous make() { return Anonymous(Kind::make()); }
        static std::string text() { return Kind::make().what(); }

        // Holds an exception to be the complete type with the whole content.
        template <class Caught>
        static void expectWhole(const Caught& caught)
        {
            const auto* whole = dynamic_cast<const Anonymous*>(&caught);
            EXPECT_EQ(typeid(caught), typeid(Anonymous));
            ASSERT_NE(whole, nullptr);
            EXPECT_EQ(whole->what(), text());
            if constexpr (std::is_same_v<Standard, std::system_error>) {
                EXPECT_EQ(whole->code(), std::error_code(ENOENT, std::generic_category()));
            }
        }
    };

    using Kinds =
        testing::Types<OfException, OfLogicError, OfRuntimeError, OfInvalidArgument, OfSystemError>;
    TYPED_TEST_SUITE(ExceptionFamily, Kinds);

    TYPED_TEST(ExceptionFamily, hasEachBaseOnce)
    {
        using Last = typename TestFixture::Anonymous;
        using Middle = typename TestFixture::Joined;
        using Third = typename TestFixture::Standard;
        // A conversion to a base that is there twice would be ambiguous.
        EXPECT_TRUE((std::is_convertible_v<Last*, Middle*>));
        EXPECT_TRUE((std::is_convertible_v<Middle*, IInternalException*>));
        EXPECT_TRUE((std::is_convertible_v<Middle*, Third*>));
        EXPECT_TRUE((std::is_convertible_v<Middle*, std::exception*>));
        EXPECT_TRUE((std::is_convertible_v<IInternalException*, IException*>));
        EXPECT_TRUE((std::is_convertible_v<IException*, clone_base*>));
        EXPECT_TRUE((std::is_convertible_v<IException*, boost::exception*>));
        EXPECT_FALSE((std::is_convertible_v<IException*, std::exception*>));
        EXPECT_TRUE((std::is_same_v<Last, detail::AnonymousInternalException<Third>>));
    }

    TYPED_TEST(ExceptionFamily, onlyTheLastClassOfItCanBeMade)
    {
        EXPECT_TRUE(std::is_abstract_v<IException>);
        EXPECT_TRUE(std::is_abstract_v<IInternalException>);
        EXPECT_TRUE(std::is_abstract_v<typename TestFixture::Joined>);
        EXPECT_FALSE(std::is_abstract_v<typename TestFixture::Anonymous>);
    }

    TYPED_TEST(ExceptionFamily, isTakenByEachOfItsHandlers)
    {
        const auto operation = [] { throw TestFixture::make(); };
        EXPECT_EQ(tests::handlersThatTake(operation), TypeParam::names());
    }

    TYPED_TEST(ExceptionFamily, answersOneTextUnderEachOfItsNames)
    {
        const auto thrown = TestFixture::make();
        const typename TestFixture::Joined& joined = thrown;
        const typename TestFixture::Standard& standard = thrown;
        const IException& root = thrown;
        const IInternalException& internal = thrown;
        const std::exception& exception = thrown;
        for (const char* answer : {thrown.what(), joined.what(), standard.what(), root.what(),
                                   internal.what(), exception.what()})
            EXPECT_EQ(answer, TestFixture::text());
    }

    TYPED_TEST(ExceptionFamily, answersItsTextAsUtf16)
    {
        const std::string text = TestFixture::text();
        const std::u16string wide(text.begin(), text.end());
        const auto thrown = TestFixture::make();
        const IException& root = thrown;
        EXPECT_EQ(root.toUstring(), wide);
    }

    TYPED_TEST(ExceptionFamily, isClonedWhole)
    {
        std::unique_ptr<const clone_base> clone;
        {
            const auto original = TestFixture::make();
            const clone_base& base = original;
            clone.reset(base.clone());
            EXPECT_NE(clone.get(), &base);
        }
        ASSERT_NE(clone, nullptr);
        TestFixture::expectWhole(*clone);
        std::unique_ptr<const clone_base> second(clone->clone());
        clone.reset();
        TestFixture::expectWhole(*second);
    }

    TYPED_TEST(ExceptionFamily, isThrownAgainWhole)
    {
        const auto original = TestFixture::make();
        const clone_base& base = original;
        try {
            base.rethrow();
            FAIL() << "nothing was thrown";
        } catch (const typename TestFixture::Anonymous& thrown) {
            EXPECT_NE(&thrown, &original); // a copy
            TestFixture::expectWhole(thrown);
        }
        EXPECT_EQ(tests::handlersThatTake([&base] { base.rethrow(); }), TypeParam::names());
    }

    TYPED_TEST(ExceptionFamily, passesThroughABoostExceptionPointerToAnotherThread)
    {
        boost::exception_ptr kept;
        std::thread([&kept] {
            try {
                throw TestFixture::make();
            } catch (...) {
                kept = boost::current_exception();
            }
        }).join();
        ASSERT_TRUE(kept);
        const auto rethrow = [&kept] { boost::rethrow_exception(kept); };
        EXPECT_EQ(tests::handlersThatTake(rethrow), TypeParam::names());
        try {
            rethrow();
        } catch (const IException& thrown) {
            TestFixture::expectWhole(thrown);
        }
    }

    TYPED_TEST(ExceptionFamily, passesThroughAStandardExceptionPointerToAnotherThread)
    {
        const std::exception_ptr kept = std::make_exception_ptr(TestFixture::make());
        tests::Names names;
        std::thread([&] {
            names = tests::handlersThatTake([&kept] { std::rethrow_exception(kept); });
        }).join();
        EXPECT_EQ(names, TypeParam::names());
    }

    TYPED_TEST(ExceptionFamily, ownsItsText)
    {
        auto original = std::make_unique<typename TestFixture::Anonymous>(TestFixture::make());
        const auto copy = *original;
        original.reset();
        TestFixture::expectWhole(copy);
    }

    TEST(Exception, ofAnInvalidArgumentIsALogicError)
    {
        try {
            throw AnonymousInternalException<std::invalid_argument>(
                std::invalid_argument("Invalid IP address string: x"));
        } catch (const std::logic_error& thrown) {
            EXPECT_STREQ(thrown.what(), "Invalid IP address string: x");
        }
    }

    TEST(Exception, ofASystemErrorKeepsValueAndCategory)
    {
        const std::error_code code(12345, std::system_category());
        const AnonymousInternalException<std::system_error> thrown(std::system_error(code, "Call"));
        EXPECT_EQ(thrown.code().value(), 12345);
        EXPECT_EQ(&thrown.code().category(), &std::system_category());
        const std::unique_ptr<const clone_base> clone(thrown.clone());
        const auto& standard = dynamic_cast<const std::system_error&>(*clone);
        EXPECT_EQ(standard.code(), code);
    }

    // Copying into the standard part keeps the text and drops what was derived.
    TEST(Exception, dropsTheTypeThatItWasMadeFrom)
    {
        const std::out_of_range derived("prefix length too large");
        const AnonymousInternalException<std::logic_error> logic(derived);
        EXPECT_STREQ(logic.what(), "prefix length too large");
        const auto asLogic = [&logic] { logic.rethrow(); };
        EXPECT_EQ(tests::handlersThatTake(asLogic), tests::namesForLogicError());
        const AnonymousInternalException<std::exception> plain(derived);
        EXPECT_STREQ(plain.what(), "prefix length too large");
        const auto asException = [&plain] { plain.rethrow(); };
        EXPECT_EQ(tests::handlersThatTake(asException), tests::namesForException());
    }

    class Silent : public std::exception {
    public:
        explicit Silent(const char* text)
            : text_(text)
        {
        }
        const char* what() const noexcept override { return text_; }

    private:
        const char* text_;
    };

    class SilentCategory : public std::error_category {
        const char* name() const noexcept override { return "silent"; }
        std::string message(int) const override { return {}; }
    };

    template <class Standard>
    std::u16string wideTextOf(const Standard& standard)
    {
        return AnonymousInternalException<Standard>(standard).toUstring();
    }

    TEST(Exception, withoutATextIsUnknownInUtf16)
    {
        const SilentCategory category;
        EXPECT_EQ(wideTextOf(std::logic_error("")), u"Unknown exception");
        EXPECT_EQ(wideTextOf(std::runtime_error("")), u"Unknown exception");
        EXPECT_EQ(wideTextOf(std::invalid_argument("")), u"Unknown exception");
        EXPECT_EQ(wideTextOf(std::system_error(std::error_code(1, category))),
                  u"Unknown exception");
        EXPECT_EQ(wideTextOf(std::exception()), u"Unknown exception");
        EXPECT_EQ(wideTextOf<std::exception>(std::logic_error("")), u"Unknown exception");
        EXPECT_EQ(wideTextOf<std::exception>(Silent("")), u"Unknown exception");
        EXPECT_EQ(wideTextOf<std::exception>(Silent(nullptr)), u"Unknown exception");
    }

    TEST(Exception, ofAPlainExceptionIsUnknown)
    {
        const AnonymousInternalException<std::exception> plain{std::exception()};
        EXPECT_STREQ(plain.what(), "Unknown exception");
        const AnonymousInternalException<std::exception> silent(Silent(nullptr));
        EXPECT_STREQ(silent.what(), "Unknown exception");
    }

    // An exception of the family may itself be what another one is made from.
    TEST(Exception, isMadeFromOneOfItsOwnFamily)
    {
        const AnonymousInternalException<std::runtime_error> first(std::runtime_error("text"));
        const AnonymousInternalException<std::exception> second(
            static_cast<const std::exception&>(first));
        EXPECT_STREQ(second.what(), "text");
    }

    TEST(Exception, widensNothingButAscii)
    {
        EXPECT_EQ(wideTextOf(std::logic_error("a~\x7F\x80\xFF")), u"a~\x7F\uFFFD\uFFFD");
    }

    TEST(Exception, isAssigned)
    {
        AnonymousInternalException<std::system_error> target(
            std::system_error(EACCES, std::generic_category(), "old"));
        const AnonymousInternalException<std::system_error> source(
            std::system_error(ENOENT, std::generic_category(), "text"));
        target = source;
        EXPECT_EQ(target.code().value(), ENOENT);
        EXPECT_STREQ(target.what(), source.what());
    }

    using Number = boost::error_info<struct NumberTag, int>;

    // What Boost attaches is counted without a lock, so original and copy must not share it.
    TEST(Exception, cloneHasItsOwnAttachedDetails)
    {
        const AnonymousInternalException<std::logic_error> original(std::logic_error("text"));
        original << Number(1);
        const std::unique_ptr<const clone_base> clone(original.clone());
        original << Number(2);
        EXPECT_EQ(*boost::get_error_info<Number>(original), 2);
        EXPECT_EQ(*boost::get_error_info<Number>(
                      dynamic_cast<const AnonymousInternalException<std::logic_error>&>(*clone)),
                  1);
    }

} // namespace
} // namespace foundation::core::except
