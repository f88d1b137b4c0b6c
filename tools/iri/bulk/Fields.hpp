#pragma once

#include "../Forms.hpp"
#include "RowMaker.hpp"

#include <foundation/network/IRI.hpp>
#include <foundation/network/iri/IRIView.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool::bulk {

/// Something of an IRI that has a name: a component, the authority, the port as a number, the whole.
enum class FieldKind {
    Iri,
    Scheme,
    Authority,
    UserInfo,
    Host,
    Port,
    PortNumber,
    Path,
    Query,
    Fragment,
};

/// A field in a form.
struct Field {
    FieldKind kind;
    const Form* form;
};

/// Reads "host" or "host:ascii": a name as in JSON or as in the name of an option, and a form.
/// @returns nothing if it is none
std::optional<Field> findField(std::string_view text);

/// The names that `findField` knows, with commas between.
std::string fieldNames();

/// What to say of a text in which `findField` reads no field, with what may have been meant.
std::string noSuchField(std::string_view text);

/// The name of a field in JSON, with its form if it has another than the given one.
std::string nameOf(const Field& field);

/// A record that is an IRI, from which fields are read.
class FieldReader {
public:
    explicit FieldReader(const foundation::network::iri::IRIView& view)
        : view_(view)
    {
    }

    enum class State { Present, Absent, Undecodable };

    /// Reads a field.
    /// @param[out] text  what it holds, valid until the next call; a view of the record, if the form
    ///        is that of the record
    State read(const Field& field, std::string_view& text);

private:
    State readAsGiven(FieldKind kind, std::string_view& text);
    State readConverted(const Field& field, std::string_view& text);

    foundation::network::iri::IRIView view_;
    std::optional<foundation::network::IRI> iri_; // made when another form is asked for
    std::string converted_;
};

/// Reads a record as an IRI. Unlike the library, takes nothing for UTF-8 that is not.
std::optional<foundation::network::iri::IRIView> viewOf(std::string_view record) noexcept;

/// What is wrong with a record that `viewOf` refuses.
Outcome judge(std::string_view record);

/// Texts with fields in between, such as "{host}\t{path:decoded}".
class Template {
public:
    /// Reads a template: "{" FIELD "}" stands for a field, "{{" and "}}" for braces, \t, \n, \0 and
    /// \\ for a tab, a line feed, a NUL and a backslash.
    /// @param[out] why  what is wrong with it
    /// @returns nothing if something is wrong
    static std::optional<Template> read(std::string_view text, std::string& why);

    /// Appends the texts, with the fields of an IRI in between; what is absent adds nothing.
    /// @returns false if a field cannot be decoded
    bool append(std::string& result, FieldReader& reader) const;

private:
    struct Part {
        std::string before;
        std::optional<Field> field;
    };

    std::vector<Part> parts_;
};

} // namespace tool::bulk
