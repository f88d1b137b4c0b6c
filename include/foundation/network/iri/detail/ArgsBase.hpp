#pragma once

#include <foundation/network/API.hpp>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <tuple>

namespace foundation::network::iri::detail {

template <class String>
class Building;

/// The components from which an IRI is built; `foundation::network::IRIArgs` tells what they mean.
///
/// An ordinary value, for one thread at a time.
///
/// @tparam String  `std::u32string`
template <class String>
class ArgsBase {
public:
    /// Nothing set.
    ArgsBase();

    /// @{
    /// A copy of all that was set; a move copies too. If memory runs out, nothing has changed.
    ArgsBase(const ArgsBase& other);
    ArgsBase& operator=(const ArgsBase& other);
    /// @}

    /// Virtual: an `IRIArgs` may be destroyed through its base.
    virtual ~ArgsBase();

    /// @{
    /// Sets a component to a plain text, in UTF-32, UTF-8 or UTF-16; a list holds bytes of UTF-8.
    /// An empty text makes the component present and empty.
    ///
    /// @throws core::except::AnonymousInternalException<std::exception> with the transcoder's
    ///         message, if UTF-8 or UTF-16 is not valid; nothing has changed then. UTF-32 is taken
    ///         as it is; what is no code point fails when the component is read, or when a
    ///         form-encoded query is built.
    void setScheme(String text);
    void setScheme(const std::string& utf8);
    void setScheme(const std::u16string& utf16);
    void setScheme(std::initializer_list<char> utf8);
    void setUserInfo(String text);
    void setUserInfo(const std::string& utf8);
    void setUserInfo(const std::u16string& utf16);
    void setUserInfo(std::initializer_list<char> utf8);
    void setHost(String text);
    void setHost(const std::string& utf8);
    void setHost(const std::u16string& utf16);
    void setHost(std::initializer_list<char> utf8);
    void setPath(String text);
    void setPath(const std::string& utf8);
    void setPath(const std::u16string& utf16);
    void setPath(std::initializer_list<char> utf8);
    void setQuery(String text);
    void setQuery(const std::string& utf8);
    void setQuery(const std::u16string& utf16);
    void setQuery(std::initializer_list<char> utf8);
    void setFragment(String text);
    void setFragment(const std::string& utf8);
    void setFragment(const std::u16string& utf16);
    void setFragment(std::initializer_list<char> utf8);
    /// @}

    /// Sets the port.
    void setPort(unsigned short number);

    /// @{
    /// Sets the port to the number that a text gives: ASCII digits of a value up to 65535, with any
    /// number of leading zeros.
    ///
    /// @throws core::except::AnonymousInternalException<std::logic_error> "Port must be
    ///         numeric". The port is still present or absent as before, and its number too, unless
    ///         digits stood in front of something else: "80x" fails and leaves 80.
    /// @throws what the transcoders throw, if the text is not valid in its encoding
    void setPort(const String& text);
    void setPort(const std::string& utf8);
    void setPort(const std::u16string& utf16);
    /// @}

    /// @{
    /// Makes a component absent. `clearHost` leaves the port alone.
    void clearScheme();
    void clearUserInfo();
    void clearHost();
    void clearPort();
    void clearPath();
    void clearQuery();
    void clearFragment();
    /// @}

    /// @{
    /// Appends a pair to the query; see `IRIArgs::appendQueryKeyValuePair`.
    void appendQueryKeyValuePair(const std::string& key, const std::string& value, bool formEncoded,
                                 bool semicolonSeparator);
    void appendQueryKeyValuePair(const std::u16string& key, const std::u16string& value,
                                 bool formEncoded, bool semicolonSeparator);
    /// @}

protected:
    /// @{
    /// Escapes what would break a pair: the separator in use, "=" and "+"; a space becomes "+".
    /// Works on single code units and does not look for escapes that are there already.
    ///
    /// @returns the escaped text, and whether something was escaped; a space does not count
    std::tuple<std::string, bool> percentEncodeFormEncodedReservedChars(
        const std::string& text, bool semicolonSeparator) const;
    std::tuple<std::u16string, bool> percentEncodeFormEncodedReservedChars(
        const std::u16string& text, bool semicolonSeparator) const;
    /// @}

private:
    friend class Building<String>;

    template <class Text>
    void appendPair(const Text& key, const Text& value, bool formEncoded, bool semicolonSeparator);

    String scheme_;
    String userInfo_;
    String host_;
    std::uint16_t port_ = 0;
    String path_;
    String query_;
    String fragment_;
    bool hasQuery_ = false;
    bool hasFragment_ = false;
    bool hasScheme_ = false;
    bool hasHost_ = false;
    bool hasUserInfo_ = false;
    bool hasPort_ = false;
    bool hasPath_ = false;
    bool schemeFromIri_ = false;    // came out of an IRI, and needs no check
    bool queryFormEncoded_ = false; // to be built as form-encoded
    bool queryHasEscapes_ = false;  // something in a pair was escaped
};

extern template class ZKFLNETWORK_API_EXTERN ArgsBase<std::u32string>;

/// Whether the whole text is a port number, as `ArgsBase::setPort` reads it.
///
/// @param number  takes the value of the digits at the front of the text, also if something else
///                follows them and the result is false; untouched if there is no such number
template <class String>
bool portStringToNumeric(const String& text, unsigned short& number);

extern template ZKFLNETWORK_API_EXTERN bool portStringToNumeric(const std::u32string& text,
                                                                unsigned short& number);

} // namespace foundation::network::iri::detail
