#include "Fields.hpp"

#include "../Components.hpp"
#include "../Nearest.hpp"
#include "../Problem.hpp"
#include "../Text.hpp"

#include <foundation/core/except/Exception.hpp>

#include <algorithm>
#include <array>
#include <exception>

namespace tool::bulk {

using foundation::network::IRI;
using foundation::network::iri::IRIView;

namespace {

    struct FieldName {
        std::string_view field;
        std::string_view word;
        FieldKind kind;
    };

    // In the order of the text.
    constexpr std::array FIELD_NAMES{
        FieldName{"iri", "iri", FieldKind::Iri},
        FieldName{"scheme", "scheme", FieldKind::Scheme},
        FieldName{"authority", "authority", FieldKind::Authority},
        FieldName{"userInfo", "user-info", FieldKind::UserInfo},
        FieldName{"host", "host", FieldKind::Host},
        FieldName{"port", "port", FieldKind::Port},
        FieldName{"portNumber", "port-number", FieldKind::PortNumber},
        FieldName{"path", "path", FieldKind::Path},
        FieldName{"query", "query", FieldKind::Query},
        FieldName{"fragment", "fragment", FieldKind::Fragment},
    };

    // No byte of valid UTF-8 has one of these values, but the library takes some for the leads of
    // sequences of four.
    bool holdsLeadOfNothing(std::string_view text) noexcept
    {
        unsigned char highest = 0;
        for (const char c : text)
            highest = std::max(highest, static_cast<unsigned char>(c));
        return highest >= 0xF8;
    }

    FieldReader::State put(std::optional<std::string_view> value, std::string_view& text)
    {
        text = value.value_or(std::string_view());
        return value ? FieldReader::State::Present : FieldReader::State::Absent;
    }

    /// @throws AnonymousInternalException<std::exception> if it cannot be decoded
    std::string readComponent(const IRI& iri, const Field& field)
    {
        const IRI::Encoding& form = field.form->encoding;
        switch (field.kind) {
        case FieldKind::Host:
            return iri.getHostUtf8(form);
        case FieldKind::Path:
            return iri.getPathUtf8(form);
        case FieldKind::Query:
            return iri.getQueryUtf8(form);
        case FieldKind::Fragment:
            return iri.getFragmentUtf8(form);
        case FieldKind::UserInfo:
            return form == IRI::Encoding::Decoded ? iri.getUserInfoUtf8(form)
                                                  : readComponents(iri, form).parts[USER_INFO].text;
        default:
            return readComponents(iri, form).authority.text;
        }
    }

} // namespace

std::optional<Field> findField(std::string_view text)
{
    const std::size_t colon = text.find(':');
    const std::string_view name = text.substr(0, colon);
    const auto* const known =
        std::find_if(FIELD_NAMES.begin(), FIELD_NAMES.end(), [name](const FieldName& each) {
            return each.field == name || each.word == name;
        });
    const Form* const form =
        colon == std::string_view::npos ? &formAsGiven() : findForm(text.substr(colon + 1));
    if (known == FIELD_NAMES.end() || form == nullptr)
        return std::nullopt;
    // Where the components of a decoded IRI end is lost.
    const bool isWhole = known->kind == FieldKind::Iri || known->kind == FieldKind::Authority;
    if (isWhole && form->encoding == IRI::Encoding::Decoded)
        return std::nullopt;
    return Field{known->kind, form};
}

std::string fieldNames()
{
    std::string result;
    for (const FieldName& name : FIELD_NAMES)
        result.append(result.empty() ? "" : ", ").append(name.field);
    return result;
}

std::string noSuchField(std::string_view text)
{
    const std::size_t colon = text.find(':');
    const std::string_view name = text.substr(0, colon);
    std::string result = "no such field: " + text::excerpt(text);
    std::vector<std::string_view> names;
    for (const FieldName& each : FIELD_NAMES) {
        if (each.field == name || each.word == name) {
            const bool isWhole = each.kind == FieldKind::Iri || each.kind == FieldKind::Authority;
            const FormUse use = isWhole ? FormUse::Wholes : FormUse::Components;
            return result + (isWhole ? "; a form of the whole is " : "; a form is ")
                   + formNames(use) + formSuggestion(text.substr(colon + 1), use);
        }
        names.push_back(each.field);
    }
    return result + "; there are " + fieldNames() + suggestion(name, names);
}

std::string nameOf(const Field& field)
{
    const auto* const name =
        std::find_if(FIELD_NAMES.begin(), FIELD_NAMES.end(),
                     [&](const FieldName& each) { return each.kind == field.kind; });
    std::string result(name->field);
    if (field.form != &formAsGiven())
        result.append(":").append(field.form->name);
    return result;
}

FieldReader::State FieldReader::read(const Field& field, std::string_view& text)
{
    const bool hasOneForm = field.kind == FieldKind::Scheme || field.kind == FieldKind::Port
                            || field.kind == FieldKind::PortNumber;
    return hasOneForm || field.form == &formAsGiven() ? readAsGiven(field.kind, text)
                                                      : readConverted(field, text);
}

FieldReader::State FieldReader::readAsGiven(FieldKind kind, std::string_view& text)
{
    switch (kind) {
    case FieldKind::Iri:
        return put(view_.text(), text);
    case FieldKind::Scheme:
        return put(view_.scheme(), text);
    case FieldKind::Authority:
        return put(view_.authority(), text);
    case FieldKind::UserInfo:
        return put(view_.userInfo(), text);
    case FieldKind::Host:
        return put(view_.host(), text);
    case FieldKind::Port:
        return put(view_.port(), text);
    case FieldKind::Path:
        return put(view_.path(), text);
    case FieldKind::Query:
        return put(view_.query(), text);
    case FieldKind::Fragment:
        return put(view_.fragment(), text);
    case FieldKind::PortNumber:
        break;
    }
    if (!view_.hasPort())
        return put(std::nullopt, text);
    converted_ = std::to_string(*view_.portNumber());
    return put(converted_, text);
}

FieldReader::State FieldReader::readConverted(const Field& field, std::string_view& text)
{
    std::string_view given;
    if (const State state = readAsGiven(field.kind, given); state != State::Present)
        return state;
    if (!iri_)
        iri_.emplace(std::string(view_.text()));
    if (field.kind == FieldKind::Iri) {
        converted_ = wholeText(*iri_, *field.form);
        return put(converted_, text);
    }
    try {
        converted_ = readComponent(*iri_, field);
    } catch (const foundation::core::except::AnonymousInternalException<std::exception>&) {
        return State::Undecodable;
    }
    return put(converted_, text);
}

std::optional<IRIView> viewOf(std::string_view record) noexcept
{
    if (holdsLeadOfNothing(record))
        return std::nullopt;
    return IRIView::parse(record);
}

Outcome judge(std::string_view record)
{
    const std::optional<Problem> problem = problemOf(record);
    return problem ? Outcome{problem->code, problem->offset} : Outcome();
}

std::optional<Template> Template::read(std::string_view text, std::string& why)
{
    Template result;
    result.parts_.emplace_back();
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::string& before = result.parts_.back().before;
        const char c = text[i];
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        const bool isLast = i + 1 == text.size();
        if (c == '\\') {
            constexpr std::string_view LETTERS = "tn0\\";
            constexpr std::string_view MEANINGS("\t\n\0\\", 4);
            const std::size_t letter = isLast ? std::string_view::npos : LETTERS.find(next);
            if (letter == std::string_view::npos) {
                why = "\"\\\" is followed by t, n, 0 or another \"\\\"";
                return std::nullopt;
            }
            before.push_back(MEANINGS[letter]);
            ++i;
        } else if ((c == '{' || c == '}') && next == c) {
            before.push_back(c);
            ++i;
        } else if (c == '}') {
            why = "a \"}\" that ends nothing; write \"}}\" for a brace";
            return std::nullopt;
        } else if (c == '{') {
            const std::size_t end = text.find('}', i);
            const std::string_view name = text.substr(i + 1, end - i - 1);
            if (end == std::string_view::npos) {
                why = "a \"{\" that does not end; write \"{{\" for a brace";
                return std::nullopt;
            }
            const std::optional<Field> field = findField(name);
            if (!field) {
                why = noSuchField(name);
                return std::nullopt;
            }
            result.parts_.back().field = field;
            result.parts_.emplace_back();
            i = end;
        } else {
            before.push_back(c);
        }
    }
    return result;
}

bool Template::append(std::string& result, FieldReader& reader) const
{
    for (const Part& part : parts_) {
        result.append(part.before);
        if (!part.field)
            continue;
        std::string_view text;
        if (reader.read(*part.field, text) == FieldReader::State::Undecodable)
            return false;
        result.append(text);
    }
    return true;
}

} // namespace tool::bulk
