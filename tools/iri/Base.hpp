#pragma once

#include "CommandLine.hpp"
#include "Output.hpp"

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

    /// Relates an IRI to the base in some way.
    /// @returns the library's own words, if it refuses; but if a component cannot be decoded, whose
    ///          and which one; else nothing
    std::optional<std::string> refusalOf(const foundation::network::IRI& related,
                                         const std::function<void()>& work) const;

private:
    std::optional<std::string> text_;
    foundation::network::IRI iri_;
};

} // namespace tool
