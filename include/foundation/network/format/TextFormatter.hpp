#pragma once

#include <string>
#include <string_view>

namespace foundation::network {

class HardwareAddress;
class InetAddress;
class InterfaceAddress;
class IRI;

/// How values are formatted. What to include is `Fmt.hpp` or `Std.hpp`; neither brings the classes
/// along.
namespace format {

    /// Formats a value as its text: UTF-8, as `toStringUtf8` gives it, or `toString` if there is no
    /// such member.
    ///
    /// @tparam Base   the formatter of `std::string_view`, whose format options are taken: fill,
    ///                alignment, width and precision
    /// @tparam Value  need not be complete before something is formatted
    template <class Base, class Value>
    struct TextFormatter : Base {
        /// Writes the text of @p value.
        /// @throws what the member throws that gives the text
        template <class Context>
        auto format(const Value& value, Context& context) const
        {
            if constexpr (requires { value.toStringUtf8(); })
                return Base::format(std::string(value.toStringUtf8()), context);
            else
                return Base::format(std::string(value.toString()), context);
        }
    };

} // namespace format

} // namespace foundation::network
