#pragma once

#include <foundation/network/API.hpp>
#include <foundation/network/iri/Encoding.hpp>
#include <foundation/network/iri/detail/Component.hpp>

#include <atomic>
#include <string>
#include <string_view>

namespace foundation::network::iri {

template <class Rules>
struct ComponentCoder;
struct UserInfoRules;
struct HostRules;
struct PathRules;
struct QueryRules;
struct FragmentRules;
struct PathContext;

namespace detail {

    template <class Coder>
    class ComponentCell;

    /// The place of one component: absent, present with a text in a cell that this owns, or
    /// present without a text, as a component whose text was moved out.
    ///
    /// `engage` may run beside readers; what else changes the place may not.
    template <class Coder>
    class CellPlace {
    public:
        using Cell = ComponentCell<Coder>; ///< what holds the text and its forms

        /// Absent.
        CellPlace() = default;

        /// A copy with a cell of its own.
        CellPlace(const CellPlace& other);

        /// @{
        /// Takes the cell over. If the other was present, it stays so, without a text.
        CellPlace(CellPlace&& other) noexcept;
        CellPlace& operator=(CellPlace&& other) noexcept;
        /// @}

        /// Frees the cell.
        ~CellPlace();

        /// The cell with the text, or null.
        Cell* get() const noexcept { return cell_.load(std::memory_order_acquire); }

        /// Whether the component is present, be it without a text.
        bool isPresent() const noexcept { return isPresentWithoutText_ || get() != nullptr; }

        /// Puts a text here in place of what was here, with the coder's context if it has one.
        template <class... Context>
        void store(std::u32string text, const Encoding& encoding, const Context&... context);

        /// Puts a text in lax UTF-8 here, if no thread has done so before.
        template <class... Context>
        void engage(std::string_view lax, const Encoding& encoding, const Context&... context);

        /// Makes the component absent.
        void reset() noexcept;

        /// Exchanges two places.
        void swap(CellPlace& other) noexcept;

    private:
        std::atomic<Cell*> cell_{nullptr};
        bool isPresentWithoutText_ = false;
    };

    template <class String>
    class TemplateIRI;

    /// The text of an IRI's user information, host, path, query and fragment.
    ///
    /// A component is stored once, in the form in which it arrived. Its other forms are made when
    /// somebody first asks for them, and kept. A form that equals the one it was made of shares its
    /// text. A component that was never set is absent; that is not the same as empty.
    ///
    /// Any number of threads may call const members of one object. Each component has a lock of its
    /// own, which is held while a form is made; a form that exists is read without it. A reference
    /// that a reader gave stays valid until that component is set or the object changes.
    ///
    /// @tparam String  `std::u32string`
    template <class String>
    class StringParts {
    public:
        /// All components absent; empty.
        StringParts();

        /// A copy with all the forms that the other has made. It shares no text with the other.
        StringParts(const StringParts& other);

        /// Takes the texts over. The components of the other stay present, but without a text:
        /// their readers throw. Whether it is empty does not change.
        StringParts(StringParts&& other) noexcept;

        /// Assigns a copy; if memory runs out, nothing has changed.
        StringParts& operator=(const StringParts& other);

        /// Takes the texts over, and leaves the other as the move constructor does.
        StringParts& operator=(StringParts&& other) noexcept;

        /// Frees the texts; references that readers gave end here.
        ~StringParts();

        /// Exchanges all components.
        void swap(StringParts& other) noexcept;

        /// Whether no component was set since construction or `reset`; a path that was set to the
        /// empty text does not count.
        bool isEmpty() const noexcept;

        /// Makes all components absent.
        void reset() noexcept;

        /// Tells the path, if there is one, whether a scheme stands before it. What was derived
        /// from the path's stored form is made anew when it is next read.
        void setSchemePresent(bool present);

        /// @{
        /// The text of one component in the form that @p encoding names: `Iri` and `IriStrict` read
        /// the same form, and so do `Ascii`, `AsciiStrict` and every higher value. Nothing is
        /// repaired for the strict ones here.
        ///
        /// @throws std::runtime_error "Item not set: Host" (UserInfo, Path, Query, Fragment), if
        ///         the component is absent or has no text
        /// @throws what the transcoders throw, if the stored text cannot be converted
        /// @complexity Linear in the length of the component on the first read of a form, then
        ///             constant.
        const String& getUserInfo(const Encoding& encoding) const;
        const String& getHost(const Encoding& encoding) const;
        const String& getPath(const Encoding& encoding) const;
        const String& getQuery(const Encoding& encoding) const;
        const String& getFragment(const Encoding& encoding) const;
        /// @}

        /// The user information with its "@", if it is present, and the host.
        ///
        /// @throws std::runtime_error "Item not set: Host: Host (in getAuthority)" without a host,
        ///         "Item not set: UserInfo" if the user information is present without a text
        String getAuthority(const Encoding& encoding) const;

        /// @{
        /// Stores the text of one component, in the form that @p encoding names, in place of what
        /// was there. An @p encoding above `AsciiStrict` makes the component present without a
        /// text.
        ///
        /// The path forgets what it was told by `setSchemePresent`.
        ///
        /// With @p formEncoded the query was put together from pairs, so that "+" is a space.
        ///
        /// @par Failure
        /// If memory runs out, nothing has changed.
        void setUserInfo(String text, const Encoding& encoding);
        void setHost(String text, const Encoding& encoding);
        void setPath(String text, const Encoding& encoding);
        void setQuery(String text, const Encoding& encoding, bool formEncoded);
        void setFragment(String text, const Encoding& encoding);
        /// @}

        /// Whether both are empty, or all components are present on both sides or on neither, with
        /// the same texts in the form in which the left side stores them.
        /// @throws what the transcoders throw, if the right side cannot be converted to that form
        bool operator==(const StringParts& other) const;

        /// The opposite of `operator==`, but for one case: if only one side is empty, they differ,
        /// even when no component does.
        bool operator!=(const StringParts& other) const;

    private:
        friend class TemplateIRI<String>;

        template <class Rules>
        using Place = CellPlace<ComponentCoder<Rules>>;

        /// Stores a component, given in lax UTF-8, if it is absent. May run beside readers.
        /// @param path         what the path knows of its neighbours; no other component asks
        /// @param formEncoded  of the query; no other component asks
        void engage(Component component, std::string_view lax, const Encoding& encoding,
                    const PathContext& path, bool formEncoded);

        const String& get(Component component, const Encoding& encoding) const;

        template <class Self, class Function>
        static auto visit(Self& self, Component component, Function function);

        bool differsFrom(const StringParts& other) const;

        Place<UserInfoRules> userInfo_;
        Place<HostRules> host_;
        Place<PathRules> path_;
        Place<QueryRules> query_;
        Place<FragmentRules> fragment_;
        bool isEmpty_ = true;
    };

    extern template class ZKFLNETWORK_API_EXTERN StringParts<std::u32string>;

} // namespace detail
} // namespace foundation::network::iri
