#pragma once

#include <foundation/network/IdnConverter.hpp>

#include <new>
#include <stdexcept>
#include <string>

namespace foundation::network::tests {

inline std::string bytesOf(const std::string& text)
{
    return text;
}

/// The units of a text, as bytes that can be compared and shown.
template <class Unit>
std::string bytesOf(const std::basic_string<Unit>& text)
{
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(Unit)};
}

inline std::string bytesOf(bool holds)
{
    return holds ? "yes" : "no";
}

/// What an operation gives, or how it fails. A want of memory goes on.
template <class Read>
std::string said(Read read)
{
    try {
        return bytesOf(read());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const IdnConverterException&) {
        throw;
    } catch (const std::exception& failure) {
        return std::string("failed: ") + failure.what();
    }
}

} // namespace foundation::network::tests
