#include "iri/ComponentCell.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace foundation::network::iri::detail {
namespace {

    /// A coder that writes down what it is asked, and answers what the test says.
    struct SpyCoder {
        struct Context {
            int mark = 0;
        };

        struct Call {
            std::string conversion;
            std::u32string text;
            int mark;

            bool operator==(const Call&) const = default;
        };

        static inline std::vector<Call> calls;
        static inline std::function<Conversion(const Call&)> answer;

        // Whether the coder can tell that a text stays what it is.
        static inline bool isSame;

        static bool isSameInIri(std::u32string_view, const Context&) noexcept { return isSame; }
        static bool isSameInAscii(std::u32string_view, const Context&) noexcept { return isSame; }
        static bool isSameDecoded(std::u32string_view, const Context&) noexcept { return isSame; }

        static Conversion decodedToIri(std::u32string_view text, const Context& context)
        {
            return convert("decodedToIri", text, context);
        }
        static Conversion decodedToAscii(std::u32string_view text, const Context& context)
        {
            return convert("decodedToAscii", text, context);
        }
        static Conversion iriToAscii(std::u32string_view text, const Context& context)
        {
            return convert("iriToAscii", text, context);
        }
        static Conversion iriToDecoded(std::u32string_view text, const Context& context)
        {
            return convert("iriToDecoded", text, context);
        }
        static Conversion asciiToIri(std::u32string_view text, const Context& context)
        {
            return convert("asciiToIri", text, context);
        }
        static Conversion asciiToDecoded(std::u32string_view text, const Context& context)
        {
            return convert("asciiToDecoded", text, context);
        }

    private:
        static Conversion convert(const char* conversion, std::u32string_view text,
                                  const Context& context)
        {
            calls.push_back({conversion, std::u32string(text), context.mark});
            return answer(calls.back());
        }
    };

    using Cell = ComponentCell<SpyCoder>;
    using Call = SpyCoder::Call;
    using Calls = std::vector<Call>;

    constexpr Form forms[] = {Form::Decoded, Form::Iri, Form::Ascii};

    class ComponentCellTest : public testing::Test {
    protected:
        ComponentCellTest()
        {
            SpyCoder::calls.clear();
            SpyCoder::answer = sameText;
            SpyCoder::isSame = false;
        }

        static Conversion sameText(const Call& call) { return call.text; }

        // "x" becomes "x>decodedToIri".
        static Conversion otherText(const Call& call)
        {
            const std::string& name = call.conversion;
            return call.text + U'>' + std::u32string(name.begin(), name.end());
        }
    };

    TEST_F(ComponentCellTest, encodingsNameForms)
    {
        struct Row {
            Encoding encoding;
            Form read, stored;
        };
        constexpr Row rows[] = {
            {Encoding::Decoded, Form::Decoded, Form::Decoded},
            {Encoding::Iri, Form::Iri, Form::Iri},
            {Encoding::IriStrict, Form::Iri, Form::Iri},
            {Encoding::Ascii, Form::Ascii, Form::Ascii},
            {Encoding::AsciiStrict, Form::Ascii, Form::Ascii},
            {Encoding{5}, Form::Ascii, Form::None},
            {Encoding{6}, Form::Ascii, Form::None},
            {Encoding{0xFFFFFFFF}, Form::Ascii, Form::None},
        };
        for (const Row& row : rows) {
            SCOPED_TRACE(static_cast<std::uint32_t>(row.encoding));
            EXPECT_EQ(formRead(row.encoding), row.read);
            EXPECT_EQ(formStored(row.encoding), row.stored);
        }
    }

    TEST_F(ComponentCellTest, readsTheStoredFormWithoutAConversion)
    {
        for (const Form form : forms) {
            const Cell cell(U"text", form, {7});
            EXPECT_EQ(cell.primary(), form);
            EXPECT_EQ(cell.context().mark, 7);
            EXPECT_EQ(cell.text(form), U"text");
            EXPECT_FALSE(cell.isShared(form));
        }
        EXPECT_TRUE(SpyCoder::calls.empty());
    }

    TEST_F(ComponentCellTest, makesNothingOfATextThatIsKnownToStay)
    {
        struct Row {
            Form stored, wanted;
            bool isAsked;
        };
        constexpr Row rows[] = {
            {Form::Decoded, Form::Iri, true}, {Form::Decoded, Form::Ascii, false},
            {Form::Iri, Form::Decoded, true}, {Form::Iri, Form::Ascii, true},
            {Form::Ascii, Form::Iri, false},  {Form::Ascii, Form::Decoded, false},
        };
        SpyCoder::isSame = true;
        SpyCoder::answer = otherText;
        for (const Row& row : rows) {
            SpyCoder::calls.clear();
            const Cell cell(U"text", row.stored);
            EXPECT_EQ(cell.text(row.wanted) == U"text", row.isAsked);
            EXPECT_EQ(cell.isShared(row.wanted), row.isAsked);
            EXPECT_EQ(SpyCoder::calls.empty(), row.isAsked);
        }
    }

    struct Making {
        Form stored;
        std::optional<Form> madeBefore;
        Form wanted;
        const char* conversion;
        Form source;
    };
    constexpr Making makings[] = {
        // the decoded form: from the IRI form, else from ASCII
        {Form::Iri, {}, Form::Decoded, "iriToDecoded", Form::Iri},
        {Form::Ascii, {}, Form::Decoded, "asciiToDecoded", Form::Ascii},
        {Form::Iri, Form::Ascii, Form::Decoded, "iriToDecoded", Form::Iri},
        {Form::Ascii, Form::Iri, Form::Decoded, "iriToDecoded", Form::Iri},
        // the IRI form: from ASCII, else from the decoded form
        {Form::Decoded, {}, Form::Iri, "decodedToIri", Form::Decoded},
        {Form::Ascii, {}, Form::Iri, "asciiToIri", Form::Ascii},
        {Form::Decoded, Form::Ascii, Form::Iri, "asciiToIri", Form::Ascii},
        {Form::Ascii, Form::Decoded, Form::Iri, "asciiToIri", Form::Ascii},
        // ASCII: from the IRI form, else from the decoded form
        {Form::Decoded, {}, Form::Ascii, "decodedToAscii", Form::Decoded},
        {Form::Iri, {}, Form::Ascii, "iriToAscii", Form::Iri},
        {Form::Decoded, Form::Iri, Form::Ascii, "iriToAscii", Form::Iri},
        {Form::Iri, Form::Decoded, Form::Ascii, "iriToAscii", Form::Iri},
    };

    TEST_F(ComponentCellTest, makesAFormFromTheRightSource)
    {
        for (const auto& answer : {sameText, otherText}) {
            for (const Making& row : makings) {
                SCOPED_TRACE(row.conversion);
                SpyCoder::answer = answer;
                const Cell cell(U"text", row.stored, {3});
                if (row.madeBefore)
                    cell.text(*row.madeBefore);
                SpyCoder::calls.clear();
                const std::u32string text = cell.text(row.wanted);
                const Call expected{row.conversion, cell.text(row.source), 3};
                EXPECT_EQ(SpyCoder::calls, Calls{expected});
                EXPECT_EQ(text, *answer(expected));
            }
        }
    }

    TEST_F(ComponentCellTest, makesEachFormOnce)
    {
        SpyCoder::answer = otherText;
        for (const Form stored : forms) {
            const Cell cell(U"text", stored);
            SpyCoder::calls.clear();
            for (int i = 0; i < 3; ++i) {
                for (const Form form : forms) {
                    cell.text(form);
                    cell.hash(form);
                }
            }
            EXPECT_EQ(SpyCoder::calls.size(), 2U);
        }
    }

    TEST_F(ComponentCellTest, handsOutAPlaceThatStays)
    {
        SpyCoder::answer = otherText;
        const Cell cell(U"text", Form::Decoded);
        const std::u32string* decoded = &cell.text(Form::Decoded);
        const std::u32string* iri = &cell.text(Form::Iri);
        const std::u32string* ascii = &cell.text(Form::Ascii);
        EXPECT_EQ(&cell.text(Form::Decoded), decoded);
        EXPECT_EQ(&cell.text(Form::Iri), iri);
        EXPECT_EQ(&cell.text(Form::Ascii), ascii);
        EXPECT_EQ(*decoded, U"text");
        EXPECT_EQ(*iri, U"text>decodedToIri");
        EXPECT_EQ(*ascii, U"text>decodedToIri>iriToAscii");
    }

    TEST_F(ComponentCellTest, sharesATextThatTheConversionLeavesAsItIs)
    {
        for (const Form stored : forms) {
            for (const Form first : forms) { // in whatever order the forms are read
                const Cell cell(U"text", stored);
                cell.text(first);
                for (const Form form : forms) {
                    EXPECT_EQ(&cell.text(form), &cell.text(stored));
                    EXPECT_EQ(cell.isShared(form), form != stored);
                }
            }
        }
    }

    TEST_F(ComponentCellTest, sharesNothingThatWasNotMade)
    {
        const Cell cell(U"text", Form::Iri);
        EXPECT_FALSE(cell.isShared(Form::Decoded));
        EXPECT_FALSE(cell.isShared(Form::Ascii));
        cell.text(Form::Decoded);
        EXPECT_TRUE(cell.isShared(Form::Decoded));
        EXPECT_FALSE(cell.isShared(Form::Ascii));
    }

    // What counts is the text that was converted, be it the stored one or not.
    TEST_F(ComponentCellTest, sharesTheTextOfADerivedForm)
    {
        SpyCoder::answer = [](const Call& call) {
            return call.conversion == "decodedToIri" ? otherText(call) : sameText(call);
        };
        const Cell cell(U"text", Form::Decoded);
        EXPECT_EQ(cell.text(Form::Iri), U"text>decodedToIri");
        EXPECT_FALSE(cell.isShared(Form::Iri));
        EXPECT_EQ(&cell.text(Form::Ascii), &cell.text(Form::Iri));
        EXPECT_TRUE(cell.isShared(Form::Ascii));
        EXPECT_NE(&cell.text(Form::Ascii), &cell.text(Form::Decoded));
    }

    // Equal to the stored text by chance, but made of another one.
    TEST_F(ComponentCellTest, sharesNothingWithAFormThatItWasNotMadeOf)
    {
        SpyCoder::answer = [](const Call& call) -> Conversion {
            return call.conversion == "decodedToIri" ? U"other" : U"text";
        };
        const Cell cell(U"text", Form::Decoded);
        EXPECT_EQ(cell.text(Form::Iri), U"other");
        EXPECT_EQ(cell.text(Form::Ascii), U"text");
        EXPECT_FALSE(cell.isShared(Form::Ascii));
        EXPECT_NE(&cell.text(Form::Ascii), &cell.text(Form::Decoded));
    }

    TEST_F(ComponentCellTest, ownsWhatAConversionOfASharedTextChanges)
    {
        SpyCoder::answer = [](const Call& call) {
            return call.conversion == "iriToAscii" ? otherText(call) : sameText(call);
        };
        const Cell cell(U"text", Form::Decoded);
        EXPECT_EQ(&cell.text(Form::Iri), &cell.text(Form::Decoded));
        EXPECT_EQ(cell.text(Form::Ascii), U"text>iriToAscii");
        EXPECT_FALSE(cell.isShared(Form::Ascii));
    }

    TEST_F(ComponentCellTest, givesTheEmptyTextForWhatCannotBeConverted)
    {
        SpyCoder::answer = [](const Call&) { return Conversion(); };
        const Cell cell(U"text", Form::Ascii);
        EXPECT_EQ(cell.text(Form::Iri), U"");
        EXPECT_EQ(cell.hash(Form::Iri), 0U);
        EXPECT_FALSE(cell.isShared(Form::Iri));
        EXPECT_EQ(cell.text(Form::Iri), U"");
        EXPECT_EQ(SpyCoder::calls.size(), 1U); // that was an answer, and it is kept
        EXPECT_EQ(cell.text(Form::Ascii), U"text");

        const Cell empty(U"", Form::Ascii);
        EXPECT_EQ(&empty.text(Form::Iri), &empty.text(Form::Ascii)); // as any text that is equal
    }

    TEST_F(ComponentCellTest, triesAgainAfterAFailure)
    {
        const Cell cell(U"text", Form::Iri);
        SpyCoder::answer = [](const Call&) -> Conversion { throw std::out_of_range("no"); };
        for (int attempt = 0; attempt < 2; ++attempt) {
            EXPECT_THROW(cell.text(Form::Decoded), std::out_of_range);
            EXPECT_THROW(cell.hash(Form::Decoded), std::out_of_range);
        }
        EXPECT_EQ(SpyCoder::calls.size(), 4U);
        EXPECT_EQ(cell.text(Form::Iri), U"text");

        // The form stayed absent: ASCII is not made of it, and the lock is free.
        SpyCoder::calls.clear();
        SpyCoder::answer = otherText;
        EXPECT_EQ(cell.text(Form::Ascii), U"text>iriToAscii");
        EXPECT_EQ(cell.text(Form::Decoded), U"text>iriToDecoded");
        EXPECT_EQ(SpyCoder::calls.size(), 2U);
    }

    // 64-bit FNV-1a over four bytes a character, low byte first.
    std::uint64_t naiveHash(const std::u32string& text)
    {
        if (text.empty())
            return 0;
        std::uint64_t hash = 0xcbf29ce484222325;
        for (const char32_t c : text) {
            for (int shift = 0; shift < 32; shift += 8) {
                hash ^= (c >> shift) & 0xFF;
                hash *= 0x100000001b3;
            }
        }
        return hash;
    }

    TEST_F(ComponentCellTest, hashesEachForm)
    {
        for (const auto& answer : {sameText, otherText}) {
            SpyCoder::answer = answer;
            for (const std::u32string& text :
                 {std::u32string(), std::u32string(1, U'\0'), std::u32string(U"text"),
                  std::u32string{U'\u00E9', U'\u4E00', 0x10FFFF, 0xFFFFFFFF}}) {
                for (const Form stored : forms) {
                    for (const Form form : forms) {
                        const Cell cell(text, stored);
                        const std::uint64_t hash = cell.hash(form); // makes the form
                        EXPECT_EQ(hash, naiveHash(cell.text(form)));
                        EXPECT_EQ(cell.hash(form), hash);
                    }
                }
            }
        }
        EXPECT_EQ(Cell(U"", Form::Iri).hash(Form::Iri), 0U); // not the offset basis
    }

    TEST_F(ComponentCellTest, dropsWhatItDerivedWhenTheContextIsApplied)
    {
        SpyCoder::answer = [](const Call& call) {
            return call.text + static_cast<char32_t>(U'0' + static_cast<char32_t>(call.mark));
        };
        for (const Form stored : forms) {
            Cell cell(U"text", stored, {1});
            const std::u32string* text = &cell.text(stored);
            for (const int mark : {1, 2, 2}) { // even if it is the same as before
                for (const Form form : forms)
                    cell.text(form);
                const std::uint64_t hash = cell.hash(stored);
                SpyCoder::calls.clear();
                cell.applyContext({mark});
                EXPECT_EQ(cell.context().mark, mark);
                EXPECT_EQ(cell.primary(), stored);
                for (const Form form : forms) {
                    EXPECT_EQ(cell.text(form).substr(0, 4), U"text");
                    EXPECT_EQ(cell.hash(form), naiveHash(cell.text(form)));
                }
                ASSERT_EQ(SpyCoder::calls.size(), 2U);
                EXPECT_EQ(SpyCoder::calls[0].mark, mark);
                EXPECT_EQ(SpyCoder::calls[1].mark, mark);
                EXPECT_EQ(&cell.text(stored), text); // what was stored stays where it is
                EXPECT_EQ(*text, U"text");
                EXPECT_EQ(cell.hash(stored), hash);
            }
        }
    }

    // A shared form that is dropped and made anew may have a text of its own, and the other way.
    TEST_F(ComponentCellTest, sharesAnewAfterTheContextIsApplied)
    {
        SpyCoder::answer = [](const Call& call) {
            return call.mark == 0 ? sameText(call) : otherText(call);
        };
        Cell cell(U"text", Form::Decoded);
        EXPECT_EQ(cell.text(Form::Iri), U"text");
        EXPECT_EQ(cell.hash(Form::Iri), naiveHash(U"text"));
        EXPECT_TRUE(cell.isShared(Form::Iri));
        cell.applyContext({1});
        EXPECT_FALSE(cell.isShared(Form::Iri));
        EXPECT_EQ(cell.text(Form::Iri), U"text>decodedToIri");
        EXPECT_EQ(cell.hash(Form::Iri), naiveHash(U"text>decodedToIri"));
        cell.applyContext({0});
        EXPECT_EQ(&cell.text(Form::Iri), &cell.text(Form::Decoded));
        EXPECT_EQ(cell.hash(Form::Iri), naiveHash(U"text"));
    }

    TEST_F(ComponentCellTest, copiesTheFormsThatAreMade)
    {
        SpyCoder::answer = [](const Call& call) {
            return call.conversion == "decodedToIri" ? otherText(call) : sameText(call);
        };
        auto source = std::make_unique<Cell>(U"text", Form::Decoded, SpyCoder::Context{5});
        source->text(Form::Iri);
        source->text(Form::Ascii);
        source->hash(Form::Ascii);
        SpyCoder::calls.clear();
        Cell copy(*source);
        for (const Form form : forms)
            EXPECT_NE(&copy.text(form), &source->text(form));
        source.reset();
        EXPECT_EQ(copy.primary(), Form::Decoded);
        EXPECT_EQ(copy.context().mark, 5);
        EXPECT_EQ(copy.text(Form::Decoded), U"text");
        EXPECT_EQ(copy.text(Form::Iri), U"text>decodedToIri");
        EXPECT_EQ(&copy.text(Form::Ascii), &copy.text(Form::Iri)); // shared within the copy
        EXPECT_EQ(copy.hash(Form::Decoded), naiveHash(U"text"));
        EXPECT_EQ(copy.hash(Form::Ascii), naiveHash(U"text>decodedToIri"));
        EXPECT_TRUE(SpyCoder::calls.empty());

        copy.applyContext({6}); // which goes its own way from here
        copy.text(Form::Iri);
        EXPECT_EQ(SpyCoder::calls, (Calls{{"decodedToIri", U"text", 6}}));
    }

    TEST_F(ComponentCellTest, copiesNothingThatIsNotMade)
    {
        const Cell source(U"text", Form::Iri);
        const Cell copy(source);
        EXPECT_TRUE(SpyCoder::calls.empty());
        copy.text(Form::Decoded);
        EXPECT_EQ(SpyCoder::calls.size(), 1U);
        source.text(Form::Decoded);
        EXPECT_EQ(SpyCoder::calls.size(), 2U);
    }

    // A reader that comes while another thread makes the form waits for it, and makes none itself.
    TEST_F(ComponentCellTest, givesAWaitingReaderWhatAnotherThreadMakes)
    {
        const Cell cell(U"text", Form::Decoded);
        std::promise<void> isBeingMade;
        std::atomic<bool> isAskedAgain{false};
        SpyCoder::answer = [&](const Call& call) {
            isBeingMade.set_value();
            while (!isAskedAgain)
                std::this_thread::yield();
            // Time for the other to see that the form is not there, and to come to the lock.
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            return otherText(call);
        };
        const std::u32string* waitedFor = nullptr;
        std::thread reader([&] {
            isBeingMade.get_future().wait();
            isAskedAgain = true;
            waitedFor = &cell.text(Form::Iri);
        });
        const std::u32string& made = cell.text(Form::Iri);
        reader.join();
        EXPECT_EQ(made, U"text>decodedToIri");
        EXPECT_EQ(waitedFor, &made);
        EXPECT_EQ(SpyCoder::calls.size(), 1U);
    }

} // namespace
} // namespace foundation::network::iri::detail
