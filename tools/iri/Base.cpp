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
