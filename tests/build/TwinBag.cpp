#include "build/TwinBag.hpp"

#include "text/Failure.hpp"

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <optional>

namespace foundation::network::tests {

namespace {

    using iri::Encoding;
    using Value = iri::detail::TemplateIRI<std::u32string>; // which reads plain texts, too

    constexpr Encoding forms[] = {Encoding::Decoded, Encoding::Iri, Encoding::IriStrict,
                                  Encoding::Ascii, Encoding::AsciiStrict};

    struct Answer {
        std::string text;
        std::optional<Failure> failure;

        bool operator==(const Answer&) const = default;
    };

    std::ostream& operator<<(std::ostream& stream, const Answer& answer)
    {
        if (answer.failure)
            return stream << *answer.failure;
        return stream << testing::PrintToString(answer.text);
    }

    template <class Read>
    Answer answerOf(Read read)
    {
        Answer answer;
        answer.failure = failureOf([&] { answer.text = read(); });
        return answer;
    }

    // Collects the differences between the two.
    class Differences {
    public:
        explicit Differences(Outcomes& outcomes)
            : outcomes_(outcomes)
        {
        }

        template <class Ours, class Theirs>
        void expectSame(const char* what, int form, Ours ours, Theirs theirs)
        {
            const Answer mine = answerOf(ours);
            const Answer other = answerOf([&] { return toUtf8(theirs()); });
            ++outcomes_[mine.failure ? mine.failure->text.substr(0, 30) : "a text"];
            if (!(mine == other))
                result_ = testing::AssertionFailure()
                          << (result_ ? "" : result_.message()) << what << " in form " << form
                          << ": " << mine << " instead of " << other << '\n';
        }

        template <class Value>
        void expectEqual(const char* what, const Value& ours, const Value& theirs)
        {
            if (ours != theirs)
                result_ = testing::AssertionFailure()
                          << (result_ ? "" : result_.message()) << what << ": " << ours
                          << " instead of " << theirs << '\n';
        }

        const testing::AssertionResult& result() const { return result_; }

    private:
        Outcomes& outcomes_;
        testing::AssertionResult result_ = testing::AssertionSuccess();
    };

    std::string predicatesOf(const IRI& iri)
    {
        std::string result;
        const auto add = [&result](bool holds, char letter) { result += holds ? letter : '-'; };
        add(iri.isEmpty(), 'e');
        add(iri.hasScheme(), 's');
        add(iri.hasAuthority(), 'a');
        add(iri.hasQuery(), 'q');
        add(iri.hasFragment(), 'f');
        add(iri.hasAbsolutePath(), '/');
        add(iri.isAbsolute(), 'A');
        add(iri.isOpaque(), 'o');
        add(iri.hasPort(), 'p');
        add(iri.hasHost(), 'h');
        add(iri.hasUserInfo(), 'u');
        return result;
    }

    // Each on a value of its own, so that nothing is there that was made for another.
    void compareTexts(const IRIArgs& args, const NaiveBuilt& naive, Differences& differences)
    {
        for (const Encoding form : forms)
            differences.expectSame(
                "text", static_cast<int>(form), [&] { return Value(args).toStringUtf8(form); },
                [&] { return naive.text(form); });
    }

    // Here the strict text of a form is read before the plain one.
    void compareTextsInTurn(const IRIArgs& args, const NaiveBuilt& naive, Differences& differences)
    {
        const IRI value(args);
        const auto compare = [&](const char* what, auto ours, Encoding form, Encoding authority) {
            differences.expectSame(what, static_cast<int>(form), ours,
                                   [&] { return naive.text(form, authority); });
        };
        compare(
            "strict text", [&] { return value.toStringUtf8(true); }, Encoding::IriStrict,
            Encoding::IriStrict);
        compare(
            "text after it", [&] { return value.toStringUtf8(); }, Encoding::Iri,
            Encoding::IriStrict);
        compare(
            "strict text", [&] { return value.toAsciiStringUtf8(true); }, Encoding::AsciiStrict,
            Encoding::AsciiStrict);
        compare(
            "text after it", [&] { return value.toAsciiStringUtf8(); }, Encoding::Ascii,
            Encoding::AsciiStrict);
    }

    void compareComponents(const IRIArgs& args, const NaiveBuilt& naive, Differences& differences)
    {
        using Read = std::string (IRI::*)(const Encoding&) const;
        struct Reader {
            const char* name;
            Read read;
            Field field;
        };
        static constexpr Reader readers[] = {
            {"user information", &IRI::getUserInfoUtf8, USER_INFO},
            {"host", &IRI::getHostUtf8, HOST},
            {"path", &IRI::getPathUtf8, PATH},
            {"query", &IRI::getQueryUtf8, QUERY},
            {"fragment", &IRI::getFragmentUtf8, FRAGMENT},
        };
        const IRI value(args);
        for (const Encoding form : forms) {
            const int number = static_cast<int>(form);
            for (const Reader& reader : readers)
                differences.expectSame(
                    reader.name, number, [&] { return (value.*reader.read)(form); },
                    [&] { return naive.component(reader.field, form); });
            differences.expectSame(
                "authority", number, [&] { return value.getAuthorityUtf8(form); },
                [&] { return naive.authority(form); });
            differences.expectSame(
                "scheme-specific part", number,
                [&] { return value.getSchemeSpecificPartUtf8(form); },
                [&] { return naive.schemeSpecificPart(form); });
        }
        differences.expectSame(
            "scheme", 0, [&] { return value.getSchemeUtf8(); }, [&] { return naive.scheme(); });
        differences.expectSame(
            "port", 0, [&] { return value.getPortUtf8(); }, [&] { return naive.port(); });
        differences.expectSame(
            "port number", 0, [&] { return std::to_string(value.getPortNumber()); },
            [&] { return naive.port(); });
    }

    void compareHashes(const IRIArgs& args, const NaiveBuilt& naive, Differences& differences)
    {
        std::uint64_t ours = 0, theirs = 0;
        const auto ourFailure = failureOf([&] { ours = IRI(args).hashValue(); });
        const auto theirFailure = failureOf([&] { theirs = naive.hash(); });
        differences.expectEqual("failure of the hash", ourFailure.has_value(),
                                theirFailure.has_value());
        differences.expectEqual("hash", ours, theirs);
    }

} // namespace

void TwinBag::set(Field field, const Text& text)
{
    static constexpr void (Base::*setters[])(std::u32string) = {
        &Base::setScheme, &Base::setUserInfo, &Base::setHost,
        &Base::setPath,   &Base::setQuery,    &Base::setFragment};
    (library.*setters[field])(text);
    naive.set(field, text);
}

testing::AssertionResult failAlike(const std::function<void()>& library,
                                   const std::function<void()>& naive, Outcomes& outcomes)
{
    const std::optional<Failure> ours = failureOf(library);
    const std::optional<Failure> theirs = failureOf(naive);
    ++outcomes[ours ? ours->text.substr(0, 30) : "done"];
    if (ours == theirs)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << testing::PrintToString(ours) << " instead of " << testing::PrintToString(theirs);
}

testing::AssertionResult buildAlike(const TwinBag& bag, Depth depth, Outcomes& outcomes)
{
    std::optional<IRI> value;
    std::optional<NaiveBuilt> naive;
    const auto result =
        failAlike([&] { value.emplace(bag.library); }, [&] { naive.emplace(bag.naive); }, outcomes);
    if (!result || !value)
        return result;
    Differences differences(outcomes);
    differences.expectEqual("predicates", predicatesOf(*value), naive->predicates());
    differences.expectSame(
        "text of the value", static_cast<int>(Encoding::Iri), [&] { return value->toStringUtf8(); },
        [&] { return naive->text(Encoding::Iri); });
    if (depth != Depth::ONE_TEXT)
        compareTexts(bag.library, *naive, differences);
    if (depth == Depth::EVERYTHING) {
        compareTextsInTurn(bag.library, *naive, differences);
        compareComponents(bag.library, *naive, differences);
        compareHashes(bag.library, *naive, differences);
    }
    return differences.result();
}

} // namespace foundation::network::tests
