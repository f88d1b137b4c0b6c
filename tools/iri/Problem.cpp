#include "Problem.hpp"

#include "DisplayWidth.hpp"
#include "Text.hpp"

#include <foundation/network/iri/Diagnosis.hpp>

#include <algorithm>

namespace tool {
namespace {

    namespace iri = foundation::network::iri;

    constexpr std::size_t SHOWN_BEFORE = 60;
    constexpr std::size_t SHOWN_AT_FAULT = 30;
    constexpr std::size_t SHOWN_BEHIND = 40;
    constexpr std::string_view CUT = "...";

    bool isContinuation(char byte) noexcept
    {
        return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
    }

    // How many characters lie before an offset, if all before it is valid UTF-8.
    std::size_t countCharacters(std::string_view text) noexcept
    {
        return static_cast<std::size_t>(
            std::count_if(text.begin(), text.end(), [](char c) { return !isContinuation(c); }));
    }

    // The place at or behind @p index that is not within a character.
    std::size_t boundaryBehind(std::string_view text, std::size_t index) noexcept
    {
        while (index < text.size() && isContinuation(text[index]))
            ++index;
        return std::min(index, text.size());
    }

    // A text that would be read, and can be printed: the library takes some bytes for UTF-8 that are
    // not, and would leave them in it.
    std::optional<std::string> repairedOf(std::string_view record)
    {
        std::optional<std::string> repaired = iri::repair(record);
        if (repaired && text::findInvalidUtf8(*repaired) != std::string_view::npos) {
            std::string escaped;
            text::appendPercentEscaped(escaped, record);
            repaired = iri::repair(escaped);
        }
        return repaired;
    }

    std::string printable(std::string_view text)
    {
        std::string result;
        text::appendPrintable(result, text);
        return result;
    }

    /// The part of a line around what is at fault, and the mark under it.
    struct Excerpt {
        std::string line;
        std::string mark;
    };

    Excerpt excerptOf(std::string_view record, std::size_t offset, std::size_t length)
    {
        const std::size_t begin =
            offset <= SHOWN_BEFORE ? 0 : boundaryBehind(record, offset - SHOWN_BEFORE);
        const std::size_t faultEnd =
            boundaryBehind(record, offset + std::min(length, SHOWN_AT_FAULT));
        const std::size_t end = boundaryBehind(record, faultEnd + SHOWN_BEHIND);

        const std::string before = printable(record.substr(begin, offset - begin));
        const std::string fault = printable(record.substr(offset, faultEnd - offset));
        const std::string behind = printable(record.substr(faultEnd, end - faultEnd));

        Excerpt excerpt;
        excerpt.line.append(begin != 0 ? CUT : "").append(before).append(fault).append(behind);
        excerpt.line.append(end != record.size() ? CUT : "");
        excerpt.mark.assign((begin != 0 ? CUT.size() : 0) + text::displayWidth(before), ' ');
        excerpt.mark.push_back('^');
        const std::size_t faultWidth = text::displayWidth(fault);
        if (faultWidth > 1)
            excerpt.mark.append(faultWidth - 1, '~');
        return excerpt;
    }

} // namespace

std::optional<Problem> problemOf(std::string_view record)
{
    const std::size_t invalid = text::findInvalidUtf8(record);
    if (invalid != std::string_view::npos) {
        constexpr auto CODE = iri::Diagnosis::Code::BadUtf8;
        return Problem{name(CODE),
                       describe(CODE),
                       {},
                       {},
                       invalid,
                       1,
                       countCharacters(record.substr(0, invalid))};
    }
    const std::optional<iri::Diagnosis> diagnosis = iri::diagnose(record);
    if (!diagnosis)
        return std::nullopt;
    const bool isAnywhere = diagnosis->component == iri::Diagnosis::Component::None;
    return Problem{name(diagnosis->code),
                   describe(diagnosis->code),
                   isAnywhere ? std::string_view() : name(diagnosis->component),
                   diagnosis->expected,
                   diagnosis->offset,
                   diagnosis->length,
                   diagnosis->codePointOffset};
}

std::string summaryOf(const Problem& problem)
{
    std::string result(problem.component);
    return result.append(result.empty() ? "" : ": ").append(problem.message);
}

void addProblem(MemberWriter& writer, std::string_view record, const Problem& problem)
{
    const std::optional<std::string> repaired = repairedOf(record);
    writer.add("error", problem.message);
    writer.add("code", problem.code);
    writer.addUnlessEmpty("component", problem.component);
    writer.addNumber("offset", problem.offset);
    writer.addNumber("length", problem.length);
    writer.addNumber("characterOffset", problem.characterOffset);
    writer.addUnlessEmpty("expected", problem.expected);
    if (repaired)
        writer.add("repaired", *repaired);
    else
        writer.addNull("repaired");
}

void appendProblem(std::string& result, const Place& place, std::string_view record,
                   const Problem& problem)
{
    const std::string line = std::to_string(place.line);
    const std::string margin(line.size() + 1, ' ');
    const Excerpt excerpt = excerptOf(record, problem.offset, problem.length);

    text::appendPrintable(result, place.source);
    result.append(":").append(line).append(":");
    result.append(std::to_string(problem.characterOffset + 1)).append(": error: ");
    result.append(summaryOf(problem)).append(" [").append(problem.code).append("]\n");

    result.append(" ").append(line).append(" | ").append(excerpt.line).append("\n");
    result.append(margin).append(" | ").append(excerpt.mark).append("\n");
    result.append(margin).append(" = at byte ").append(std::to_string(problem.offset));
    result.append(", character ").append(std::to_string(problem.characterOffset));
    if (!problem.expected.empty())
        result.append("; expected ").append(problem.expected);
    result.append("\n");
    if (const std::optional<std::string> repaired = repairedOf(record); repaired) {
        constexpr std::size_t WORTH_SHOWING = 300;
        if (repaired->size() <= WORTH_SHOWING)
            result.append(margin)
                .append(" = would be read: ")
                .append(printable(*repaired))
                .append("\n");
    }
}

std::string describeProblem(std::string_view option, std::string_view value, const Problem& problem)
{
    std::string result = std::string(option).append(" is no IRI\n");
    const std::string source = std::string("<").append(option).append(">");
    appendProblem(result, {source, 1}, value, problem);
    result.pop_back();
    return result;
}

} // namespace tool
