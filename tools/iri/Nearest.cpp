#include "Nearest.hpp"

#include <algorithm>
#include <utility>
#include <vector>

namespace tool {
namespace {

    constexpr std::size_t MOST_ERRORS = 2;

} // namespace

// Optimal string alignment: row by row through the beginnings of the left word.
std::size_t typingErrors(std::string_view left, std::string_view right)
{
    std::vector<std::size_t> last;
    std::vector<std::size_t> previous;
    std::vector<std::size_t> row(right.size() + 1);
    for (std::size_t j = 0; j <= right.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= left.size(); ++i) {
        last = std::exchange(previous, row);
        row[0] = i;
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const std::size_t wrong = left[i - 1] == right[j - 1] ? 0 : 1;
            row[j] = std::min({previous[j] + 1, row[j - 1] + 1, previous[j - 1] + wrong});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1])
                row[j] = std::min(row[j], last[j - 2] + 1);
        }
    }
    return row.back();
}

std::string suggestion(std::string_view word, std::span<const std::string_view> names)
{
    std::size_t least = MOST_ERRORS + 1;
    std::string_view nearest;
    for (const std::string_view name : names) {
        // What is longer by more cannot be near, however long that takes to find out.
        if (word.size() > name.size() + MOST_ERRORS)
            continue;
        const std::size_t errors = typingErrors(word, name);
        if (errors < least && errors < std::max(word.size(), name.size()) - 1) {
            least = errors;
            nearest = name;
        }
    }
    if (nearest.empty())
        return "";
    return std::string("; did you mean ").append(nearest).append("?");
}

} // namespace tool
