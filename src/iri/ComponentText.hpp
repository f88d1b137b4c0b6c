#pragma once

#include "text/LaxUtf8.hpp"

#include <string>
#include <string_view>

namespace foundation::network::iri::detail {

/// A component in some form: either as the text of the value has it, in lax UTF-8, or as it was
/// made, in UTF-32. A view, which lives as long as the value.
class ComponentText {
public:
    ComponentText() = default;

    /// What the value stores.
    explicit ComponentText(std::string_view stored) noexcept
        : stored_(stored)
    {
    }

    /// What was made.
    explicit ComponentText(const std::u32string& made) noexcept
        : made_(&made)
    {
    }

    /// Calls a function with the text in whichever encoding it is.
    template <class Function>
    auto visit(Function function) const
    {
        return made_ == nullptr ? function(stored_) : function(std::u32string_view(*made_));
    }

    /// The text in lax UTF-8: what the value stores, or @p made, which then holds what was made.
    std::string_view laxIn(std::string& made) const
    {
        return made_ == nullptr ? stored_ : std::string_view(made = text::toLaxUtf8(*made_));
    }

    /// The text in UTF-32.
    std::u32string elements() const
    {
        return made_ == nullptr ? text::fromLaxUtf8(stored_) : *made_;
    }

private:
    std::string_view stored_;
    const std::u32string* made_ = nullptr;
};

} // namespace foundation::network::iri::detail
