#include "Json.hpp"

#include "Text.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <utility>

// Texts may be longer than the 32 bits that RapidJSON gives them by default.
#define RAPIDJSON_NO_SIZETYPEDEFINE
namespace rapidjson {
using SizeType = std::size_t;
}
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace tool {
namespace {

    /// RapidJSON writes through what an allocator gives, and would through null.
    class ThrowingAllocator {
    public:
        // The names are RapidJSON's.
        [[maybe_unused]] static constexpr bool kNeedFree = true;

        static void* Malloc(std::size_t size) { return Realloc(nullptr, 0, size); }

        static void* Realloc(void* old, std::size_t /*oldSize*/, std::size_t size)
        {
            if (size == 0) {
                std::free(old);
                return nullptr;
            }
            void* const memory = std::realloc(old, size);
            if (memory == nullptr)
                throw std::bad_alloc();
            return memory;
        }

        static void Free(void* memory) noexcept { std::free(memory); }
    };

    using Utf8 = rapidjson::UTF8<>;
    using Buffer = rapidjson::GenericStringBuffer<Utf8, ThrowingAllocator>;
    using JsonWriter = rapidjson::Writer<Buffer, Utf8, Utf8, ThrowingAllocator>;
    using JsonReader = rapidjson::GenericReader<Utf8, Utf8, ThrowingAllocator>;

    /// Collects the members of one object, and passes over what is nested in it.
    class ObjectHandler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, ObjectHandler> {
    public:
        explicit ObjectHandler(JsonObject& result)
            : result_(result)
        {
        }

        // The names are RapidJSON's.
        bool Null() { return take(nullptr); }
        bool Bool(bool value) { return take(value); }
        bool RawNumber(const char* /*text*/, std::size_t /*size*/, bool /*copy*/)
        {
            return take(OtherJson());
        }
        bool String(const char* text, std::size_t size, bool /*copy*/)
        {
            return take(std::string(text, size));
        }
        bool Key(const char* text, std::size_t size, bool /*copy*/)
        {
            if (depth_ == 1)
                name_.assign(text, size);
            return true;
        }
        bool StartObject()
        {
            ++depth_;
            return depth_ == 1 || depth_ > 2 || store(OtherJson());
        }
        bool EndObject(std::size_t /*count*/) { return end(); }
        bool StartArray()
        {
            ++depth_;
            return depth_ > 2 || (depth_ == 2 && store(OtherJson()));
        }
        bool EndArray(std::size_t /*count*/) { return end(); }

    private:
        bool take(JsonValue value)
        {
            return depth_ > 1 || (depth_ == 1 && store(std::move(value)));
        }

        bool store(JsonValue value)
        {
            result_.insert_or_assign(name_, std::move(value));
            return true;
        }

        bool end()
        {
            --depth_;
            return true;
        }

        JsonObject& result_;
        std::string name_;
        std::size_t depth_ = 0;
    };

    /// Whether an escape stood for half a surrogate pair, which RapidJSON lets pass.
    bool isText(const JsonObject::value_type& member)
    {
        const auto* const value = std::get_if<std::string>(&member.second);
        return text::findInvalidUtf8(member.first) == std::string_view::npos
               && (value == nullptr || text::findInvalidUtf8(*value) == std::string_view::npos);
    }

} // namespace

struct JsonLines::Writer {
    Buffer buffer;
    JsonWriter json{buffer};

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

void JsonLines::addNumber(std::string_view name, std::uint64_t value)
{
    writer_->key(name);
    writer_->json.Uint64(value);
}

void JsonLines::addNull(std::string_view name)
{
    writer_->key(name);
    writer_->json.Null();
}

void JsonLines::beginList(std::string_view name)
{
    writer_->key(name);
    writer_->json.StartArray();
}

void JsonLines::addElement(std::string_view element)
{
    writer_->json.String(element.data(), element.size());
}

void JsonLines::addElement(std::uint32_t element)
{
    writer_->json.Uint(element);
}

void JsonLines::beginElement()
{
    writer_->json.StartObject();
}

void JsonLines::endElement()
{
    writer_->json.EndObject();
}

void JsonLines::endList()
{
    writer_->json.EndArray();
}

void JsonLines::end(std::string& result)
{
    writer_->json.EndObject();
    text::appendPrintableJson(result, {writer_->buffer.GetString(), writer_->buffer.GetSize()});
    result.push_back('\n');
}

std::string readJsonObject(std::string_view text, JsonObject& result)
{
    result.clear();
    if (std::string problem = text::describeInvalidUtf8(text); !problem.empty())
        return problem;

    // RapidJSON takes a NUL for the end of the text.
    const std::size_t length = std::min(text.find('\0'), text.size());
    rapidjson::MemoryStream stream(text.data(), length);
    JsonReader reader;
    ObjectHandler handler(result);
    // Iterative: the depth of what is nested is for others to choose.
    constexpr unsigned FLAGS =
        rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
    const rapidjson::ParseResult end = reader.Parse<FLAGS>(stream, handler);
    if (end.Code() == rapidjson::kParseErrorTermination)
        return "not a JSON object";
    if (end.IsError() || length < text.size())
        return "not JSON at byte " + std::to_string(end.IsError() ? end.Offset() : length);
    if (!std::all_of(result.begin(), result.end(), isText))
        return "not JSON: an escape stands for half a character";
    return "";
}

} // namespace tool
