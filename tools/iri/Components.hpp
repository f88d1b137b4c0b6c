#pragma once

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include "Colors.hpp"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

/// One component of one IRI, in one form.
struct Component {
    enum class State {
        Absent,
        Present,
        Undecodable, ///< present, but its escapes stand for something that is no text
    };

    State state = State::Absent;
    std::string text{};
};

/// Where the components stand in `Components::parts`: in the order of the text.
enum Part : std::size_t { SCHEME, USER_INFO, HOST, PORT, PATH, QUERY, FRAGMENT, PART_COUNT };

/// All components of one IRI, in one form.
struct Components {
    std::array<Component, PART_COUNT> parts;
    Component authority; ///< user information, host and port together
};

/// How the tool calls a component, everywhere.
struct PartName {
    std::string_view field; ///< for programs: the member of a JSON object
    std::string_view label; ///< for people
    std::string_view word;  ///< for command lines
    Ink ink;
};

extern const std::array<PartName, PART_COUNT> PART_NAMES;

/// Reads the components in a form. In the strict forms, the user information is repaired as in the
/// authority, so that the parts always make up the whole.
Components readComponents(const foundation::network::IRI& iri,
                          foundation::network::IRI::Encoding form);

/// The first component in which two IRIs differ, in the order of the text; nothing, if they have
/// the same.
std::optional<Part> findDifference(const Components& left, const Components& right);

/// What to say of the components that cannot be decoded; empty if all can.
std::string describeUndecodable(const Components& components);

/// The component of that name in JSON or in the name of an option ("user-info").
std::optional<Part> findPart(std::string_view name) noexcept;

/// What may have been meant by a name that no component has, as `suggestion` says it.
std::string partSuggestion(std::string_view name);

/// Sets a component, as plain text.
/// @throws what the setters of `IRIArgs` throw
void setPart(foundation::network::IRIArgs& args, Part part, const std::string& text);

} // namespace tool
