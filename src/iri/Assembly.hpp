#pragma once

#include "iri/ComponentCoders.hpp"
#include "iri/Reading.ipp"
#include "text/LaxUtf8.hpp"

#include <foundation/network/iri/Encoding.hpp>
#include <foundation/network/iri/detail/Component.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace foundation::network::iri::detail {

/// A value while it is put together from components, its own or those of other values.
///
/// Components taken from another value keep the form in which they are stored there, so that no
/// text is converted. Only views are gathered, which must stay valid until `finish` lays the text
/// out; then the value may be used.
template <class String>
class Assembly {
public:
    using Iri = TemplateIRI<String>;
    using View = typename Iri::View;

    /// Goes on with @p iri, a fresh value.
    explicit Assembly(Iri& iri)
        : iri_(iri)
    {
    }

    ComponentFlags& flags() noexcept { return iri_.flags_; }

    void setScheme(View scheme)
    {
        scheme_ = scheme;
        flags().hasScheme = true;
    }

    void setPort(View port, std::uint16_t number)
    {
        port_ = port;
        iri_.portNumber_ = number;
        flags().hasPort = true;
    }

    /// Stores a component other than the path, as plain text or as it stands in an IRI, and marks it
    /// as present.
    void set(Component component, View text, const Encoding& encoding)
    {
        place(component, text, encoding);
        switch (component) {
        case Component::UserInfo:
            flags().hasUserInfo = true;
            break;
        case Component::Host:
            flags().hasHost = true;
            break;
        case Component::Query:
            flags().hasQuery = true;
            break;
        case Component::Fragment:
            flags().hasFragment = true;
            break;
        case Component::Path:
            break;
        }
    }

    /// Stores the query.
    /// @param readAsForm   whether its conversions treat it as form-encoded
    /// @param formEncoded  whether it was put together from pairs
    void setQuery(View text, const Encoding& encoding, bool readAsForm, bool formEncoded)
    {
        set(Component::Query, text, encoding);
        flags().queryReadsAsForm = readAsForm;
        flags().formEncoded = formEncoded;
    }

    /// Stores a path as plain text and marks it as not empty.
    void setDecodedPath(View path, bool isAbsolute)
    {
        flags().pathIsEmpty = false;
        flags().hasAbsolutePath = isAbsolute;
        place(Component::Path, path, Encoding::Decoded);
    }

    /// Stores a path in two pieces as plain text and marks it as what it is.
    void setDecodedPath(View directory, View path)
    {
        const View front = directory.empty() ? path : directory;
        if (front.empty())
            return setEmptyPath();
        setDecodedPath(path, front.front() == Iri::FORWARD_SLASH);
        directory_ = directory;
    }

    void setEmptyPath()
    {
        flags().pathIsEmpty = true;
        place(Component::Path, {}, Encoding::Decoded);
    }

    void takeScheme(const Iri& from)
    {
        if (from.hasScheme())
            setScheme(from.schemeText());
    }

    /// Takes user information, host and port, as far as @p from has them.
    void takeAuthority(const Iri& from)
    {
        if (from.hasUserInfo())
            take(Component::UserInfo, from);
        if (from.hasHost())
            take(Component::Host, from);
        if (from.hasPort())
            setPort(from.portText(), from.portNumber_);
    }

    /// Takes a path that is not empty, as it is stored.
    void takePath(const Iri& from)
    {
        take(Component::Path, from);
        flags().pathIsEmpty = false;
        flags().pathHasDotSegments = from.pathHasDotSegments();
        flags().hasAbsolutePath = from.hasAbsolutePath();
    }

    void takeQuery(const Iri& from)
    {
        if (from.hasQuery())
            takeQuery(from, from.flags_.formEncoded);
    }

    /// @param readAsForm  whether the query's conversions treat it as form-encoded
    void takeQuery(const Iri& from, bool readAsForm)
    {
        const auto stored = from.readStoredForm(Component::Query);
        setQuery(stored.text, stored.encoding, readAsForm, from.flags_.formEncoded);
    }

    /// Takes all that stands before the path.
    void takeFront(const Iri& from)
    {
        if (!from.hasComponents_) { // its text was moved out, of which each component tells
            takeScheme(from);
            takeAuthority(from);
            return;
        }
        front_ = &from;
        ComponentFlags& has = flags();
        has.hasScheme = from.hasScheme();
        has.hasUserInfo = from.hasUserInfo();
        has.hasHost = from.hasHost();
        has.hasPort = from.hasPort();
        has.plain.insertFrom(from.flags_.plain, Component::UserInfo);
        has.plain.insertFrom(from.flags_.plain, Component::Host);
        iri_.portNumber_ = from.portNumber_;
    }

    /// Takes all that stands behind the path.
    void takeBack(const Iri& from)
    {
        // Its text may go on to show a fragment that was dropped.
        const bool showsFragment = from.text_.size() > from.ranges_.queryEnd;
        if (!from.hasComponents_ || from.hasFragment() != showsFragment) {
            takeQuery(from);
            takeFragment(from);
            return;
        }
        back_ = &from;
        ComponentFlags& has = flags();
        has.hasQuery = from.hasQuery();
        has.hasFragment = from.hasFragment();
        has.queryReadsAsForm = from.flags_.formEncoded;
        has.formEncoded = from.flags_.formEncoded;
        has.plain.insertFrom(from.flags_.plain, Component::Query);
        has.plain.insertFrom(from.flags_.plain, Component::Fragment);
    }

    void takeFragment(const Iri& from)
    {
        if (from.hasFragment())
            take(Component::Fragment, from);
    }

    /// Makes the fragment of a whole value absent. Its text may go on to show it.
    static void dropFragment(Iri& iri) noexcept { iri.flags_.hasFragment = false; }

    /// Lays the text out and derives what follows from the components. Comes last.
    /// @param readsTheSame  whether the values whose components were taken all say so of theirs
    void finish(bool readsTheSame = false)
    {
        writeText();
        iri_.hasComponents_ = true;
        ComponentFlags& flags = iri_.flags_;
        if (flags.pathIsEmpty) // also one that nobody has stored is plain text
            flags.plain.insert(Component::Path);
        flags.partsAreEmpty = !flags.hasUserInfo && !flags.hasHost && !flags.hasQuery
                              && !flags.hasFragment
                              && iri_.ranges_.pathBegin == iri_.ranges_.pathEnd;
        iri_.isEmpty_.store(flags.partsAreEmpty && !flags.hasScheme && !flags.hasPort,
                            std::memory_order_relaxed); // nobody else can see the value yet
        flags.hasAuthority = flags.hasHost;
        flags.readsTheSame =
            readsTheSame && !looksLikeScheme(iri_.storedText(Component::Path), iri_.pathContext());
        flags.exceedsUnicode = !readsTheSame && text::exceedsUnicode(iri_.text_);
        flags.isAbsolute = flags.hasScheme;
        flags.isOpaque = flags.hasScheme && !flags.hasAuthority && !flags.hasAbsolutePath;
    }

private:
    View& at(Component component) noexcept { return texts_[static_cast<std::size_t>(component)]; }
    const View& at(Component component) const noexcept
    {
        return texts_[static_cast<std::size_t>(component)];
    }

    void place(Component component, View text, const Encoding& encoding)
    {
        at(component) = text;
        if (encoding == Encoding::Decoded)
            flags().plain.insert(component);
    }

    void take(Component component, const Iri& from)
    {
        const auto stored = from.readStoredForm(component);
        set(component, stored.text, stored.encoding);
    }

    // All that is there, with its delimiters (RFC 3986, 5.3), and where it lies.
    void writeText()
    {
        std::string text;
        text.reserve(lengthOfText());
        if (front_ != nullptr)
            copyFront(text);
        else
            writeFront(text);
        ComponentRanges& ranges = iri_.ranges_;
        ranges.pathBegin = text.size();
        text.append(directory_).append(at(Component::Path));
        ranges.pathEnd = text.size();
        if (back_ != nullptr)
            copyBack(text);
        else
            writeBack(text);
        iri_.text_ = std::move(text);
    }

    void copyFront(std::string& text)
    {
        text.append(frontText());
        iri_.ranges_ = front_->ranges_;
    }

    void writeFront(std::string& text)
    {
        const ComponentFlags& has = iri_.flags_;
        ComponentRanges& ranges = iri_.ranges_;
        text.append(scheme_);
        ranges.schemeEnd = text.size();
        if (has.hasScheme)
            text.push_back(Iri::COLON);
        if (has.hasHost)
            text.append(2, Iri::FORWARD_SLASH);
        if (has.hasUserInfo)
            text.append(at(Component::UserInfo)).push_back(Iri::COMMERCIAL_AT);
        ranges.hostBegin = text.size();
        text.append(at(Component::Host));
        ranges.hostEnd = text.size();
        if (has.hasPort)
            text.append(1, Iri::COLON).append(port_);
    }

    void copyBack(std::string& text)
    {
        const ComponentRanges& from = back_->ranges_;
        iri_.ranges_.queryEnd = text.size() + (from.queryEnd - from.pathEnd);
        text.append(backText());
    }

    void writeBack(std::string& text)
    {
        const ComponentFlags& has = iri_.flags_;
        if (has.hasQuery)
            text.append(1, Iri::QUESTION_MARK).append(at(Component::Query));
        iri_.ranges_.queryEnd = text.size();
        if (has.hasFragment)
            text.append(1, Iri::HASH_SIGN).append(at(Component::Fragment));
    }

    View frontText() const noexcept { return front_->textBetween(0, front_->ranges_.pathBegin); }
    View backText() const noexcept
    {
        return back_->textBetween(back_->ranges_.pathEnd, back_->text_.size());
    }

    // Exactly, so that a short text fits into the string itself.
    std::size_t lengthOfText() const noexcept
    {
        const std::size_t front = front_ != nullptr ? frontText().size() : lengthOfFront();
        const std::size_t back = back_ != nullptr ? backText().size() : lengthOfBack();
        return front + directory_.size() + at(Component::Path).size() + back;
    }

    std::size_t lengthOfFront() const noexcept
    {
        const ComponentFlags& has = iri_.flags_;
        const unsigned delimiters = unsigned{has.hasScheme} + 2 * unsigned{has.hasHost}
                                    + unsigned{has.hasUserInfo} + unsigned{has.hasPort};
        return scheme_.size() + at(Component::UserInfo).size() + at(Component::Host).size()
               + port_.size() + delimiters;
    }

    std::size_t lengthOfBack() const noexcept
    {
        const ComponentFlags& has = iri_.flags_;
        return at(Component::Query).size() + at(Component::Fragment).size() + unsigned{has.hasQuery}
               + unsigned{has.hasFragment};
    }

    Iri& iri_;
    const Iri* front_ = nullptr; // whose text is taken up to the path
    const Iri* back_ = nullptr;  // whose text is taken from behind the path
    View scheme_;
    View port_;
    View directory_; // stands in front of the path
    std::array<View, 5> texts_;
};

} // namespace foundation::network::iri::detail
