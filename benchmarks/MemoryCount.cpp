// Counts, for each subject and corpus, what is accepted and what that costs in memory, and writes
// it to standard output as JSON. Exit 1 if this library refuses a text of the corpus.

#include "Corpus.hpp"
#include "HeapMeter.hpp"
#include "subjects/All.hpp"

#include <cstdint>
#include <iostream>
#include <string>
#include <type_traits>

namespace benchmarks {
namespace {

    struct Count {
        std::uint64_t accepted = 0;
        std::uint64_t printedAsGiven = 0;
        HeapUse parsing;  // of the values alone, before anything was read
        HeapUse reading;  // every component, in the form in which it was written
        HeapUse printing; // the whole text, after the components
    };

    template <class Subject>
    void countText(const std::string& text, Count& count)
    {
        const HeapUse start = heapUse();
        const auto value = Subject::parse(text);
        const HeapUse parsed = heapUse();
        Subject::readStrings(value, [](const auto&) {});
        const HeapUse read = heapUse();
        bool asGiven = false;
        {
            const std::string printed = Subject::print(value);
            asGiven = printed == text;
        }
        const HeapUse printed = heapUse();

        ++count.accepted;
        count.printedAsGiven += asGiven;
        count.parsing += parsed - start;
        count.reading += read - parsed;
        count.printing += printed - read;
    }

    template <class Subject>
    Count countCorpus(const Corpus& corpus)
    {
        // What a library allocates once, on first use, belongs to no text.
        Count firstUse;
        for (const std::string& text : corpus.texts)
            if (Subject::accepts(text)) {
                countText<Subject>(text, firstUse);
                break;
            }

        Count count;
        for (const std::string& text : corpus.texts)
            if (Subject::accepts(text))
                countText<Subject>(text, count);
        return count;
    }

    /// One JSON object. The names hold nothing that JSON would want escaped.
    template <class Subject>
    void write(std::ostream& out, const Corpus& corpus, const Count& count)
    {
        const auto field = [&out](const char* name, auto number) {
            out << R"(, ")" << name << R"(": )" << number;
        };
        out << R"({"corpus": ")" << corpus.name << R"(", "subject": ")" << Subject::name << '"';
        field("texts", corpus.texts.size());
        field("accepted", count.accepted);
        field("printed_as_given", count.printedAsGiven);
        field("object_bytes", sizeof(typename Subject::Value));
        field("heap_bytes_parsed", count.parsing.liveBytes);
        field("allocations_parsing", count.parsing.allocations);
        field("allocations_reading", count.reading.allocations);
        field("allocations_printing", count.printing.allocations);
        out << '}';
    }

} // namespace
} // namespace benchmarks

int main()
{
    using namespace benchmarks;

    bool allAccepted = true;
    const char* separator = "[\n";
    for (const Corpus* corpus : {&urls(), &iris(), &encodedIris(), &seventy()})
        forEachSubject([&]<class Subject>() {
            const Count count = countCorpus<Subject>(*corpus);
            std::cout << separator;
            write<Subject>(std::cout, *corpus, count);
            separator = ",\n";
            if (std::is_same_v<Subject, Zkflnetwork> && count.accepted != corpus->texts.size())
                allAccepted = false;
        });
    std::cout << "\n]\n";
    if (!allAccepted)
        std::cerr << "zkflnetwork refuses a text of the corpus\n";
    return allAccepted ? 0 : 1;
}
