#include "Answers.hpp"

#include "Text.hpp"

#include <cstddef>
#include <optional>
#include <vector>

namespace tool {

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
    if (reading.isUtf8 || !refuseInvalidUtf8(record))
        refuse(record, &record.text, false, reading.why);
}

void Answers::refuse(const Record& record, const std::string* iri, bool isEscaped,
                     std::string_view why)
{
    if (isJson_) {
        json_.begin();
        if (iri != nullptr)
            json_.add(subject_, *iri);
        if (isEscaped)
            json_.addBool("escaped", true);
        json_.addBool("valid", false);
        json_.add("error", why);
        endJson();
    }
    report(record, why);
}

void Answers::fail(const Record& record, std::string_view why)
{
    if (isJson_) {
        beginJson(record);
        json_.add("error", why);
        endJson();
    }
    report(record, why);
}

void Answers::give(const Record& record, std::string_view result)
{
    if (isJson_) {
        beginJson(record);
        json_.add("result", result);
        endJson();
        return;
    }
    text::appendPrintable(output_.text(), result);
    output_.text().push_back('\n');
    output_.endRecord();
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

    if (!isJson_) {
        text::appendPrintable(output_.text(), whole);
        output_.text().push_back('\n');
        output_.endRecord();
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
    if (isJson_) {
        beginJson(record);
        json_.add("result", result);
        json_.addBool("resolvesBack", resolvesBack);
        endJson();
        return;
    }
    text::appendPrintable(output_.text(), result);
    output_.text().append(resolvesBack ? "\tresolves back\n" : "\tdoes not resolve back\n");
    output_.endRecord();
}

void Answers::giveComponents(std::string_view text, const foundation::network::IRI& iri,
                             const Form& form, const Components& components, std::string_view error)
{
    std::vector<std::string_view> undecodable;
    const auto add = [&](std::string_view name, const Component& component) {
        if (component.state == Component::State::Present)
            json_.add(name, component.text);
        else if (component.state == Component::State::Absent)
            json_.addNull(name);
        else
            undecodable.push_back(name);
    };

    json_.begin();
    json_.add("iri", text);
    json_.addBool("valid", true);
    json_.add("form", form.name);
    json_.add("text", wholeText(iri, form));
    for (std::size_t part = 0; part < PART_COUNT; ++part) {
        if (part == USER_INFO)
            add("authority", components.authority);
        add(PART_NAMES[part].field, components.parts[part]);
        if (part == PORT && iri.hasPort())
            json_.addNumber("portNumber", iri.getPortNumber());
        else if (part == PORT)
            json_.addNull("portNumber");
    }
    if (!undecodable.empty()) {
        json_.beginList("undecodable");
        for (const std::string_view name : undecodable)
            json_.addElement(name);
        json_.endList();
    }
    if (!error.empty())
        json_.add("error", error);
    endJson();
}

ExitCode Answers::answerEach(
    Records& records, const std::function<std::string(const foundation::network::IRI&)>& make)
{
    ExitCode code = ExitCode::Yes;
    for (Record record; records.next(record);) {
        const Reading reading = readIri(record.text);
        std::string result;
        if (!reading.iri) {
            refuse(record, reading);
            code = ExitCode::No;
        } else if (const auto refusal = refusalOf([&] { result = make(*reading.iri); })) {
            fail(record, *refusal);
            code = ExitCode::No;
        } else {
            give(record, result);
        }
    }
    return code;
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

void Answers::beginJson(const Record& record)
{
    json_.begin();
    json_.add("iri", record.text);
    json_.addBool("valid", true);
}

void Answers::endJson()
{
    json_.end(output_.text());
    output_.endRecord();
}

} // namespace tool
