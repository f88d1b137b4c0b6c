#pragma once

#include <foundation/network/API.hpp>
#include <foundation/network/iri/detail/ArgsBase.hpp>

#include <initializer_list>
#include <string>

namespace foundation::network {

class IRI;

/// The components from which an `IRI` is built.
///
/// Set what is wanted, in any order, and give the whole to `IRI(const IRIArgs&)`. Each component is
/// plain text, not escaped: "a b" comes out as "a%20b", and "a%41" as "a%2541". Only the query of
/// `appendQueryKeyValuePair` carries its own escapes. Nothing is checked here but the text of a
/// port; what does not fit together is refused when the IRI is built.
///
/// A component that was never set is absent, which is not the same as empty.
///
/// An ordinary value, for one thread at a time. A value that was moved from is unchanged. Where memory
/// runs out `std::bad_alloc` is thrown and nothing has changed; the exceptions are
/// `appendQueryKeyValuePair`, and `setPort` with a text that it would refuse.
class ZKFLNETWORK_API IRIArgs : public iri::detail::ArgsBase<std::u32string> {
public:
    /// Nothing set.
    IRIArgs();

    /// The components of an IRI, as `IRI::toArgs` gives them.
    /// @throws what `IRI::toArgs` throws
    explicit IRIArgs(const IRI& iri);

    /// @{
    /// A copy of all that was set. What was moved from keeps it, too.
    /// @complexity Linear in the length of the components, also for a move.
    IRIArgs(const IRIArgs& other);
    IRIArgs(IRIArgs&& other);
    IRIArgs& operator=(const IRIArgs& other);
    IRIArgs& operator=(IRIArgs&& other);
    /// @}

    /// IRIs that were built from this live on.
    ~IRIArgs() override;

    /// @{
    /// Sets a component to a plain text, in UTF-8 or UTF-16; a list holds bytes of UTF-8. An empty
    /// text makes the component present and empty. `setQuery` replaces the text of
    /// `appendQueryKeyValuePair`, but the query goes on to be built as if it carried its escapes.
    ///
    /// A host is a name or an IPv4 address here. Of an IP literal the brackets and colons are escaped,
    /// so that "[::1]" becomes "%5B%3A%3A1%5D": make such an IRI from a text.
    ///
    /// @returns this, so that calls can be chained
    /// @throws core::except::AnonymousInternalException<std::exception> with the transcoder's
    ///         message, if the text is not valid in its encoding; nothing has changed then
    IRIArgs& setScheme(const std::string& utf8);
    IRIArgs& setScheme(const std::u16string& utf16);
    IRIArgs& setScheme(std::initializer_list<char> utf8);
    IRIArgs& setUserInfo(const std::string& utf8);
    IRIArgs& setUserInfo(const std::u16string& utf16);
    IRIArgs& setUserInfo(std::initializer_list<char> utf8);
    IRIArgs& setHost(const std::string& utf8);
    IRIArgs& setHost(const std::u16string& utf16);
    IRIArgs& setHost(std::initializer_list<char> utf8);
    IRIArgs& setPath(const std::string& utf8);
    IRIArgs& setPath(const std::u16string& utf16);
    IRIArgs& setPath(std::initializer_list<char> utf8);
    IRIArgs& setQuery(const std::string& utf8);
    IRIArgs& setQuery(const std::u16string& utf16);
    IRIArgs& setQuery(std::initializer_list<char> utf8);
    IRIArgs& setFragment(const std::string& utf8);
    IRIArgs& setFragment(const std::u16string& utf16);
    IRIArgs& setFragment(std::initializer_list<char> utf8);
    /// @}

    /// Sets the port.
    IRIArgs& setPort(unsigned short number);

    /// @{
    /// Sets the port to the number that a text gives: ASCII digits of a value up to 65535, with any
    /// number of leading zeros, which are lost.
    ///
    /// @throws core::except::AnonymousInternalException<std::logic_error> "Port must be
    ///         numeric". The port is still present or absent as before, and its number too, unless
    ///         digits stood in front of something else: "80x" fails and leaves 80.
    /// @throws what `IRI(const std::string&)` and `IRI(const std::u16string&)` throw, if the text
    ///         is not valid in its encoding
    IRIArgs& setPort(const std::string& utf8);
    IRIArgs& setPort(const std::u16string& utf16);
    IRIArgs& setPort(std::initializer_list<char> utf8);
    /// @}

    /// @{
    /// Makes a component absent. `clearQuery` does not make the query forget that it was put
    /// together from pairs; see `setQuery`.
    IRIArgs& clearScheme();
    IRIArgs& clearUserInfo();
    IRIArgs& clearPort();
    IRIArgs& clearPath();
    IRIArgs& clearQuery();
    IRIArgs& clearFragment();
    /// @}

    /// Makes the host absent, and the port too, which needs one. User information needs one as well,
    /// but stays.
    IRIArgs& clearHost();

    /// @{
    /// Appends "key=value" to the query, in the style of application/x-www-form-urlencoded.
    ///
    /// The separator in use, "=" and "+" are escaped, a space is written "+". Everything else stays,
    /// "%" and the other separator among it. Escapes that are there already are kept in the IRI, if
    /// @p formEncoded is true or something in a pair had to be escaped; otherwise their "%" is
    /// escaped when the IRI is built. `iri::QueryPairs` reads the pairs again.
    ///
    /// @param key    UTF-8 or UTF-16; not empty
    /// @param value  likewise; may be empty
    /// @param formEncoded  whether characters outside ASCII are escaped too when the IRI is built
    /// @param semicolonSeparator  whether ";" stands between pairs, otherwise "&"
    /// @returns this, so that calls can be chained
    /// @throws core::except::AnonymousInternalException<std::logic_error> "Key must not be empty";
    ///         nothing has changed then
    /// @throws what `IRI(const std::string&)` and `IRI(const std::u16string&)` throw, if a text is
    ///         not valid in its encoding; a separator may have been appended by then, and the query
    ///         may count as one that carries its own escapes
    /// @throws std::bad_alloc with the same after-effects
    IRIArgs& appendQueryKeyValuePair(const std::string& key, const std::string& value,
                                     bool formEncoded, bool semicolonSeparator);
    IRIArgs& appendQueryKeyValuePair(const std::u16string& key, const std::u16string& value,
                                     bool formEncoded, bool semicolonSeparator);
    /// @}

private:
    using Base = iri::detail::ArgsBase<std::u32string>;
};

} // namespace foundation::network
