#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

namespace tool {

/// Writes JSON objects (RFC 8259), one after the other, each on a line of its own.
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
    void addNumber(std::string_view name, std::uint64_t value);
    void addNull(std::string_view name);
    /// @}

    /// @{
    /// Begins a member of the object that is a list, adds elements to it, ends it. An element that
    /// is an object begins, gets its members as above, and ends.
    /// @param element  valid UTF-8
    void beginList(std::string_view name);
    void addElement(std::string_view element);
    void addElement(std::uint32_t element);
    void beginElement();
    void endElement();
    void endList();
    /// @}

    /// Ends the object and appends it, with a line feed.
    void end(std::string& result);

private:
    struct Writer;
    std::unique_ptr<Writer> writer_;
};

/// A value of a JSON object that the tool has no use for: a number, a list, an object.
struct OtherJson {};

using JsonValue = std::variant<OtherJson, std::nullptr_t, bool, std::string>;

/// The members of a JSON object by their names; of two with one name, the last.
using JsonObject = std::map<std::string, JsonValue, std::less<>>;

/// Reads a text that is one JSON object (RFC 8259).
/// @param result  the object; its names and texts are valid UTF-8
/// @returns why it is none; empty if it is one
std::string readJsonObject(std::string_view text, JsonObject& result);

} // namespace tool
