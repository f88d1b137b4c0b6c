#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tool {

/// Writes flat JSON objects (RFC 8259), one after the other, each on a line of its own.
///
/// The output is valid UTF-8 in which unprintable characters are escaped.
class JsonLines {
public:
    JsonLines();
    JsonLines(const JsonLines&) = delete;
    JsonLines& operator=(const JsonLines&) = delete;
    ~JsonLines();

    void begin();

    /// @{
    /// Adds a member to the object.
    /// @param value  valid UTF-8
    void add(std::string_view name, std::string_view value);
    void addBool(std::string_view name, bool value);
    void addNumber(std::string_view name, std::uint32_t value);
    void addNull(std::string_view name);
    /// @}

    /// Ends the object and appends it, with a line feed.
    void end(std::string& result);

private:
    struct Writer;
    std::unique_ptr<Writer> writer_;
};

} // namespace tool
