#include "Base.hpp"

#include "Components.hpp"
#include "Reading.hpp"

#include <foundation/core/except/Exception.hpp>

#include <exception>
#include <utility>

namespace tool {

Base::Base(CommandLine& commandLine)
{
    commandLine.addText("--base", "IRI", "the base; it must be given", text_);
}

std::optional<ExitCode> Base::read(const CommandLine& commandLine, Output& output)
{
    if (!text_)
        return commandLine.refuse("--base must be given", output);
    Reading reading = readIri(*text_);
    if (!reading.iri)
        return commandLine.refuse(describeProblem("--base", *text_, *reading.problem), output);
    iri_ = std::move(*reading.iri);
    return std::nullopt;
}

ExitCode Base::relateEach(Records& records, Answers& answers,
                          const std::function<std::string(const foundation::network::IRI&)>& relate,
                          const std::function<bool(const Record&, const foundation::network::IRI&,
                                                   const std::string& result)>& give) const
{
    ExitCode code = ExitCode::Yes;
    for (Record record; records.next(record);) {
        const Reading reading = readIri(record.text);
        std::string result;
        bool isGood = false;
        if (!reading.iri)
            answers.refuse(record, reading);
        else if (const auto refusal =
                     refusalOf(*reading.iri, [&] { result = relate(*reading.iri); }))
            answers.fail(record, *refusal);
        else
            isGood = give(record, *reading.iri, result);
        if (!isGood)
            code = ExitCode::No;
    }
    return code;
}

// The library's own words, if it refuses; but if a component cannot be decoded, whose and which one.
std::optional<std::string> Base::refusalOf(const foundation::network::IRI& related,
                                           const std::function<void()>& work) const
{
    using foundation::network::IRI;
    namespace except = foundation::core::except;
    try {
        work();
        return std::nullopt;
    } catch (const except::AnonymousInternalException<std::exception>& refusal) {
        const auto describe = [](const IRI& iri) {
            return describeUndecodable(readComponents(iri, IRI::Encoding::Decoded));
        };
        if (std::string problem = describe(related); !problem.empty())
            return problem;
        const std::string problem = describe(iri_);
        return problem.empty() ? refusal.what() : "--base: " + problem;
    } catch (const except::IException& refusal) {
        return refusal.what();
    }
}

} // namespace tool
