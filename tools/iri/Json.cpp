#include "Json.hpp"

#include "Text.hpp"

#include <cstddef>

// Texts may be longer than the 32 bits that RapidJSON gives them by default.
#define RAPIDJSON_NO_SIZETYPEDEFINE
namespace rapidjson {
using SizeType = std::size_t;
}
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace tool {

struct JsonLines::Writer {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> json{buffer};

    void key(std::string_view name) { json.Key(name.data(), name.size()); }
};

JsonLines::JsonLines()
    : writer_(std::make_unique<Writer>())
{
}

JsonLines::~JsonLines() = default;

void JsonLines::begin()
{
    writer_->buffer.Clear();
    writer_->json.Reset(writer_->buffer);
    writer_->json.StartObject();
}

void JsonLines::add(std::string_view name, std::string_view value)
{
    writer_->key(name);
    writer_->json.String(value.data(), value.size());
}

void JsonLines::addBool(std::string_view name, bool value)
{
    writer_->key(name);
    writer_->json.Bool(value);
}

void JsonLines::addNumber(std::string_view name, std::uint32_t value)
{
    writer_->key(name);
    writer_->json.Uint(value);
}

void JsonLines::addNull(std::string_view name)
{
    writer_->key(name);
    writer_->json.Null();
}

void JsonLines::end(std::string& result)
{
    writer_->json.EndObject();
    text::appendPrintableJson(result, {writer_->buffer.GetString(), writer_->buffer.GetSize()});
    result.push_back('\n');
}

} // namespace tool
