#include "Answers.hpp"

#include "Problem.hpp"
#include "Text.hpp"

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

namespace tool {

namespace {

    // In the order of the members.
    constexpr std::array COMPONENT_COLUMNS{std::string_view("iri"),
                                           std::string_view("escaped"),
                                           std::string_view("valid"),
                                           std::string_view("form"),
                                           std::string_view("text"),
                                           std::string_view("scheme"),
                                           std::string_view("authority"),
                                           std::string_view("userInfo"),
                                           std::string_view("host"),
                                           std::string_view("port"),
                                           std::string_view("portNumber"),
                                           std::string_view("path"),
                                           std::string_view("query"),
                                           std::string_view("fragment"),
                                           std::string_view("undecodable"),
                                           std::string_view("error"),
                                           std::string_view("code"),
                                           std::string_view("component"),
                                           std::string_view("offset"),
                                           std::string_view("length"),
                                           std::string_view("characterOffset"),
                                           std::string_view("expected"),
                                           std::string_view("repaired")};

} // namespace

std::span<const std::string_view> componentColumns() noexcept
{
    return COMPONENT_COLUMNS;
}

Answers::Answers(const FormatOptions& options, Output& output,
                 std::span<const std::string_view> columns, std::string_view subject)
    : Answers(options.format(), output, columns, subject)
{
    if (options.hasHeader())
        writer_.appendHeader(output.text());
}

MemberWriter& Answers::begin()
{
    writer_.begin();
    return writer_;
}

void Answers::end()
{
    writer_.end(output_.text());
    output_.endRecord();
}

bool Answers::refuseInvalidUtf8(const Record& record)
{
    const std::string problem = text::describeInvalidUtf8(record.text);
    if (problem.empty())
        return false;
    std::string escaped;
    text::appendEscapedBytes(escaped, record.text);
    refuse(record, &escaped, true, problem);
    return true;
}

void Answers::refuse(const Record& record, const Reading& reading)
{
    if (reading.problem)
        refuse(record, *reading.problem);
    else
        refuse(record, &record.text, false, reading.why);
}

void Answers::refuse(const Record& record, const Problem& problem)
{
    if (haveMembers()) {
        const bool isText = text::findInvalidUtf8(record.text) == std::string::npos;
        writer_.begin();
        if (isText) {
            writer_.add(subject_, record.text);
        } else {
            std::string escaped;
            text::appendEscapedBytes(escaped, record.text);
            writer_.add(subject_, escaped);
            writer_.addBool("escaped", true);
        }
        writer_.addBool("valid", false);
        addProblem(writer_, record.text, problem);
        end();
    }
    std::string message;
    appendProblem(message, {record.source, record.line}, record.text, problem);
    output_.writeToErrors(message);
}

void Answers::refuse(const Record& record, const std::string* iri, bool isEscaped,
                     std::string_view why)
{
    if (haveMembers()) {
        writer_.begin();
        if (iri != nullptr)
            writer_.add(subject_, *iri);
        if (isEscaped)
            writer_.addBool("escaped", true);
        writer_.addBool("valid", false);
        writer_.add("error", why);
        end();
    }
    report(record, why);
}

void Answers::fail(const Record& record, std::string_view why)
{
    if (haveMembers()) {
        beginValid(record);
        writer_.add("error", why);
        end();
    }
    report(record, why);
}

void Answers::give(const Record& record, std::string_view result)
{
    if (haveMembers()) {
        beginValid(record);
        writer_.add("result", result);
        end();
        return;
    }
    appendText(result, "");
}

bool Answers::giveBuilt(const Record& record, const foundation::network::IRI& iri, const Form& form)
{
    const std::string whole = wholeText(iri, form);
    const Components components = readComponents(iri, form.encoding);
    const Reading reading = readIri(whole);
    std::string error;
    if (!reading.iri)
        error = "the text is no IRI; another --form may be";
    else if (const auto part =
                 findDifference(components, readComponents(*reading.iri, formAsGiven().encoding)))
        error.append("the text reads as an IRI with another ").append(PART_NAMES[*part].label);

    if (!haveMembers()) {
        appendText(whole, "");
    } else if (error.empty()) {
        giveComponents(whole, iri, form, components, "");
    } else {
        refuse(record, &whole, false, error);
        return false;
    }
    if (!error.empty())
        report(record, error);
    return error.empty();
}

void Answers::giveProven(const Record& record, std::string_view result, bool resolvesBack)
{
    if (haveMembers()) {
        beginValid(record);
        writer_.add("result", result);
        writer_.addBool("resolvesBack", resolvesBack);
        end();
        return;
    }
    appendText(result, resolvesBack ? "\tresolves back" : "\tdoes not resolve back");
}

void Answers::giveComponents(std::string_view text, const foundation::network::IRI& iri,
                             const Form& form, const Components& components, std::string_view error)
{
    std::vector<std::string_view> undecodable;
    const auto add = [&](std::string_view name, const Component& component) {
        if (component.state == Component::State::Present)
            writer_.add(name, component.text);
        else if (component.state == Component::State::Absent)
            writer_.addNull(name);
        else
            undecodable.push_back(name);
    };

    writer_.begin();
    writer_.add("iri", text);
    writer_.addBool("valid", true);
    writer_.add("form", form.name);
    writer_.add("text", wholeText(iri, form));
    for (std::size_t part = 0; part < PART_COUNT; ++part) {
        if (part == USER_INFO)
            add("authority", components.authority);
        add(PART_NAMES[part].field, components.parts[part]);
        if (part == PORT && iri.hasPort())
            writer_.addNumber("portNumber", iri.getPortNumber());
        else if (part == PORT)
            writer_.addNull("portNumber");
    }
    if (!undecodable.empty()) {
        writer_.beginList("undecodable");
        for (const std::string_view name : undecodable)
            writer_.addElement(name);
        writer_.endList();
    }
    if (!error.empty())
        writer_.add("error", error);
    end();
}

void Answers::report(const Record& record, std::string_view why)
{
    std::string message;
    if (!record.origin.empty())
        message.append(record.origin).append(": ");
    message.append(why);
    if (!record.text.empty() || !record.origin.empty())
        message.append(": ").append(text::excerpt(record.text));
    output_.reportError(message);
}

void Answers::beginValid(const Record& record)
{
    writer_.begin();
    writer_.add(subject_, record.text);
    writer_.addBool("valid", true);
}

void Answers::appendText(std::string_view result, std::string_view remark)
{
    std::string& out = output_.text();
    if (format_ == RowFormat::Raw)
        out.append(result);
    else
        text::appendPrintable(out, result);
    out.append(remark).push_back(format_ == RowFormat::Raw ? '\0' : '\n');
    output_.endRecord();
}

} // namespace tool
