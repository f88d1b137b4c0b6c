#include "Base.hpp"

#include "Reading.hpp"

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

} // namespace tool
