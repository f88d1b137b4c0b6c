#pragma once

#include "CommandLine.hpp"

#include <foundation/network/IRI.hpp>

#include <string>
#include <string_view>

namespace tool {

/// A form in which text is written, under the name that users give it.
struct Form {
    std::string_view name;
    foundation::network::IRI::Encoding encoding;
};

/// The form of a text that shows it as it was given.
const Form& formAsGiven() noexcept;

/// @returns null if no form has that name
const Form* findForm(std::string_view name) noexcept;

/// What a form is for.
enum class FormUse { Components, Wholes };

/// The names of the forms, with commas between.
std::string formNames(FormUse use);

/// What may have been meant by a name that no form has, as `suggestion` says it.
std::string formSuggestion(std::string_view name, FormUse use);

/// Adds the option that chooses a form for components.
void addComponentForms(CommandLine& commandLine, const Form*& target);

/// Adds the option that chooses a form for whole IRIs, of which "decoded" is none: where its
/// components end would be lost.
void addWholeForms(CommandLine& commandLine, const Form*& target);

/// The whole IRI in one of the forms of `addWholeForms`, as UTF-8.
std::string wholeText(const foundation::network::IRI& iri, const Form& form);

} // namespace tool
