#pragma once

#include <string>
#include <string_view>

namespace tool {

/// Standard output, collected into large pieces, and standard error.
///
/// The two keep their order: what was written before an error is out before it.
class Output {
public:
    Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// Where to append a record, followed by a call of `endRecord`.
    std::string& text() noexcept { return text_; }

    /// Lets a record go, at the latest with the next `flush`.
    /// @throws std::system_error, if it cannot be written
    void endRecord();

    /// Writes all that was collected.
    /// @throws std::system_error
    void flush();

    /// Prints a line "iri: message" to standard error.
    /// @param message  free of unprintable characters
    /// @throws std::system_error from standard output; standard error may be closed
    void reportError(std::string_view message);

    /// As `reportError`, for the last words of the program: what was not yet written never will be.
    void reportFailure(std::string_view message) noexcept;

    /// Prints a text to standard error as it is.
    /// @throws as `reportError`
    void writeToErrors(std::string_view text);

private:
    std::string text_;
};

} // namespace tool
