#pragma once

#include "Answers.hpp"
#include "CommandLine.hpp"
#include "ExitCode.hpp"
#include "Output.hpp"
#include "Records.hpp"

#include <foundation/network/IRI.hpp>

#include <functional>
#include <optional>
#include <string>

namespace tool {

/// The option that names the IRI to which others are related.
class Base {
public:
    /// Adds the option.
    explicit Base(CommandLine& commandLine);
    Base(const Base&) = delete;
    Base& operator=(const Base&) = delete;

    /// Reads the base, once the command line was read.
    /// @returns with what code to end, if it was not given or is no IRI; else nothing
    std::optional<ExitCode> read(const CommandLine& commandLine, Output& output);

    /// The base that was read.
    const foundation::network::IRI& iri() const noexcept { return iri_; }

    /// Relates each record that is an IRI to the base, and answers each record.
    /// @param relate  makes the text that tells the relation
    /// @param give    gives that text, and tells whether all is well with it
    /// @returns whether all went well
    ExitCode relateEach(Records& records, Answers& answers,
                        const std::function<std::string(const foundation::network::IRI&)>& relate,
                        const std::function<bool(const Record&, const foundation::network::IRI&,
                                                 const std::string& result)>& give) const;

private:
    std::optional<std::string> refusalOf(const foundation::network::IRI& related,
                                         const std::function<void()>& work) const;

    std::optional<std::string> text_;
    foundation::network::IRI iri_;
};

} // namespace tool
