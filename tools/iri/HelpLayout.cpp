#include "HelpLayout.hpp"

#include <algorithm>

namespace tool::help {
namespace {

    // Appends a line of two columns; where the second begins shows by at least two spaces.
    void appendColumns(std::string& result, std::string_view line)
    {
        const std::size_t first = std::min(line.find_first_not_of(' '), line.size());
        const std::size_t gap = line.find("  ", first);
        const std::size_t second =
            gap == std::string_view::npos ? first : line.find_first_not_of(' ', gap);
        if (line.size() <= WIDTH || second == std::string_view::npos) {
            result.append(line);
            return;
        }
        result.append(line.substr(0, second));
        appendWrapped(result, line.substr(second), second, second);
    }

} // namespace

void appendWrapped(std::string& result, std::string_view text, std::size_t margin,
                   std::size_t column)
{
    bool isBegin = true;
    while (!text.empty()) {
        const std::size_t space = std::min(text.find(' '), text.size());
        const std::string_view word = text.substr(0, space);
        text.remove_prefix(std::min(space + 1, text.size()));
        if (!isBegin && column + 1 + word.size() > WIDTH) {
            result.append("\n").append(margin, ' ');
            column = margin;
        } else if (!isBegin) {
            result.push_back(' ');
            ++column;
        }
        result.append(word);
        column += word.size();
        isBegin = false;
    }
}

void appendParagraphs(std::string& result, std::string_view text)
{
    std::string paragraph;
    const auto endParagraph = [&] {
        if (paragraph.empty())
            return;
        appendWrapped(result, paragraph, 0, 0);
        result.push_back('\n');
        paragraph.clear();
    };
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (!line.empty() && line.front() != ' ') {
            paragraph.append(paragraph.empty() ? "" : " ").append(line);
            continue;
        }
        endParagraph();
        appendColumns(result, line);
        result.push_back('\n');
    }
    endParagraph();
}

} // namespace tool::help
