#pragma once

#include "iri/NaiveCoding.hpp"

#include <foundation/network/iri/Encoding.hpp>

#include <array>
#include <cstdint>
#include <optional>
#include <string>

/// IRIs as plain records of components, with which the tests do slowly what the library does.
namespace foundation::network::tests {

using Text = std::u32string;

/// One component: the form in which it came, and those that were made from it when somebody asked.
class NaiveComponent {
public:
    NaiveComponent(iri::naive::Component kind, Text text, iri::Encoding form);

    /// The text in a form, which is kept: a later form may be made from it.
    const Text& read(iri::Encoding form);

    const Text& stored() const { return *forms_[primary_]; }
    iri::Encoding storedForm() const;

    const iri::naive::Context& context() const { return context_; }

    /// Forgets what was made under the old context.
    void apply(const iri::naive::Context& context);

private:
    iri::naive::Component kind_;
    std::array<std::optional<Text>, 3> forms_; // decoded, IRI, ASCII
    std::size_t primary_;
    iri::naive::Context context_;
};

/// What is known of an IRI. `NaiveRecord()` is the empty one, which was made from no text.
struct NaiveRecord {
    std::optional<Text> source; ///< the text, if it was made from one
    bool isEmpty = true;
    bool componentsAreEmpty = true; ///< nothing was ever stored but an empty path
    std::optional<Text> scheme;
    std::optional<Text> port;
    std::optional<NaiveComponent> userInfo;
    std::optional<NaiveComponent> host;
    std::optional<NaiveComponent> path;
    std::optional<NaiveComponent> query;
    std::optional<NaiveComponent> fragment;
    bool hasQuery = false;
    bool hasFragment = false;
    bool hasAuthority = false;
    bool hasAbsolutePath = false;
    bool isAbsolute = false;
    bool isOpaque = false;
    bool pathHasDotSegments = false;
    bool pathIsEmpty = true;
    bool formEncoded = false;
    std::array<Text, 5> wholes; ///< the whole texts that were read, by form; strict ones last

    void setUserInfo(const Text& text, iri::Encoding form);
    void setHost(const Text& text, iri::Encoding form);
    void setPath(const Text& text, iri::Encoding form = iri::Encoding::Decoded);
    void setQuery(const Text& text, iri::Encoding form, bool isFormEncoded);
    void setFragment(const Text& text, iri::Encoding form);
    void setSchemePresent();

    /// What is known of the whole once all components are there: an authority comes with a host,
    /// and what the scheme makes of it.
    void finish();

    /// The path in a form; empty if there is none.
    Text pathText(iri::Encoding form);

    std::uint16_t portNumber() const;
    Text authority(iri::Encoding form);
    Text schemeSpecificPart(iri::Encoding form);
    Text whole(iri::Encoding form);
};

/// The record of a text, which must be an IRI reference.
NaiveRecord parsed(const Text& text);

/// Components in plain text, of which an IRI is built.
struct NaiveArguments {
    std::optional<Text> scheme;
    std::optional<Text> userInfo;
    std::optional<Text> host;
    std::optional<std::uint16_t> port;
    std::optional<Text> path;
    std::optional<Text> query;
    std::optional<Text> fragment;
    bool queryIsFormEncoded = false; ///< the flag given with its last pair
    bool queryHasEscapes = false;    ///< something in a pair was escaped
};

/// The record of an IRI that is built of components, which must go together.
NaiveRecord built(const NaiveArguments& arguments);

} // namespace foundation::network::tests
