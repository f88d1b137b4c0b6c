#include "Forms.hpp"

#include "Nearest.hpp"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

namespace tool {
namespace {

    using foundation::network::IRI;

    // The one form that only components can take is the last.
    constexpr Form FORMS[] = {
        {"iri", IRI::Encoding::Iri},         {"iri-strict", IRI::Encoding::IriStrict},
        {"ascii", IRI::Encoding::Ascii},     {"ascii-strict", IRI::Encoding::AsciiStrict},
        {"decoded", IRI::Encoding::Decoded},
    };

    constexpr std::span<const Form> COMPONENT_FORMS(FORMS);
    constexpr std::span<const Form> WHOLE_FORMS = COMPONENT_FORMS.first(4);

    std::span<const Form> formsFor(FormUse use) noexcept
    {
        return use == FormUse::Wholes ? WHOLE_FORMS : COMPONENT_FORMS;
    }

    void addForms(CommandLine& commandLine, const Form*& target, std::span<const Form> forms,
                  const std::string& help)
    {
        std::vector<std::pair<std::string, const Form*>> names;
        for (const Form& form : forms)
            names.emplace_back(form.name, &form);
        commandLine.addChoice("--form", "FORM", std::move(names), target, help);
    }

} // namespace

const Form& formAsGiven() noexcept
{
    return FORMS[0];
}

const Form* findForm(std::string_view name) noexcept
{
    const auto* const form = std::find_if(std::begin(FORMS), std::end(FORMS),
                                          [name](const Form& each) { return each.name == name; });
    return form == std::end(FORMS) ? nullptr : form;
}

std::string formNames(FormUse use)
{
    std::string result;
    for (const Form& form : formsFor(use))
        result.append(result.empty() ? "" : ", ").append(form.name);
    return result;
}

std::string formSuggestion(std::string_view name, FormUse use)
{
    std::vector<std::string_view> names;
    for (const Form& form : formsFor(use))
        names.push_back(form.name);
    return suggestion(name, names);
}

void addComponentForms(CommandLine& commandLine, const Form*& target)
{
    addForms(commandLine, target, COMPONENT_FORMS,
             "how to write the components:\n"
             "iri           as they were given; the default\n"
             "iri-strict    with stray percent signs escaped\n"
             "ascii         with characters outside ASCII escaped\n"
             "ascii-strict  as ascii and iri-strict at once\n"
             "decoded       as plain text, with the escapes undone");
}

void addWholeForms(CommandLine& commandLine, const Form*& target)
{
    addForms(commandLine, target, WHOLE_FORMS,
             "how to write the result:\n"
             "iri           as it is; the default\n"
             "iri-strict    with stray percent signs escaped\n"
             "ascii         with characters outside ASCII escaped\n"
             "ascii-strict  as ascii and iri-strict at once");
}

std::string wholeText(const IRI& iri, const Form& form)
{
    const bool isStrict =
        form.encoding == IRI::Encoding::IriStrict || form.encoding == IRI::Encoding::AsciiStrict;
    const bool isAscii =
        form.encoding == IRI::Encoding::Ascii || form.encoding == IRI::Encoding::AsciiStrict;
    return isAscii ? iri.toAsciiStringUtf8(isStrict) : iri.toStringUtf8(isStrict);
}

} // namespace tool
