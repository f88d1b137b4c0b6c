// The inverse of resolution, as far as it goes.

#include "except/Throw.hpp"
#include "iri/Assembly.hpp"
#include "iri/ComponentCoders.hpp"
#include "iri/DotSegments.hpp"
#include "iri/PercentCoding.hpp"
#include "iri/Reading.ipp"
#include "iri/Serialisation.ipp"
#include "iri/grammar/PathSegmentGrammar.hpp"
#include "reference/PathSegments.hpp"
#include "text/Comparing.hpp"
#include "text/LaxUtf8.hpp"

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

namespace foundation::network::iri::detail {

/// One value on its way to a reference that names it in terms of a base.
///
/// It keeps of the value what it must and strips what it can: first the scheme, then the authority,
/// then the front of the path. Texts are compared exactly, decoded. Several results do not resolve
/// back to the value; they are meant as they are.
template <class String>
class Relativisation {
public:
    using Iri = TemplateIRI<String>;
    using View = typename Iri::View;

    Relativisation(const Iri& iri, const Iri& base, Iri& target)
        : iri_(iri)
        , base_(base)
        , readsTheSame_(iri.flags_.readsTheSame && base.flags_.readsTheSame)
        , assembly_(target)
    {
    }

    void run()
    {
        checkPaths();
        assembly_.takeFragment(iri_);
        if (namesSameResource()) {
            assembly_.finish(readsTheSame_);
            return;
        }
        // Read before anything is decided, so that a path that cannot be decoded fails on every
        // road.
        const View path = iri_.flags_.pathIsEmpty ? View() : pathOfIri();
        const bool sameScheme = iri_.schemeText() == base_.schemeText();
        if (iri_.hasScheme() && !sameScheme) {
            takeWhole();
            return;
        }
        checkSchemeAndAuthority();
        if (iri_.hasAuthority() != base_.hasAuthority() || authoritiesDiffer()) {
            // A reference without a scheme would take the base's authority.
            if (!iri_.hasAuthority())
                assembly_.takeScheme(iri_);
            assembly_.takeAuthority(iri_);
            takePathAndQuery();
            return;
        }
        takeDifference(path);
        assembly_.finish(readsTheSame_);
    }

private:
    void checkPaths()
    {
        if (!iri_.hasAbsolutePath() && base_.hasAbsolutePath() && !iri_.flags_.pathIsEmpty)
            core::except::throwLogicError("Cannot make relative to base. Already relative");
        if (iri_.hasAbsolutePath() && !base_.hasAbsolutePath() && !pathOfBase().empty())
            core::except::throwLogicError("Cannot make relative. Base is relative");
    }

    void checkSchemeAndAuthority() const
    {
        if (iri_.hasScheme())
            return;
        if (base_.hasScheme())
            core::except::throwLogicError(
                "Cannot make relative to base as base has scheme but this does not");
        if (base_.hasAuthority() && !iri_.hasAuthority())
            core::except::throwLogicError(
                "Cannot make relative to base as base has authority but this does not");
    }

    bool namesSameResource() const
    {
        std::string ofIri;
        std::string ofBase;
        return iri_.schemeText() == base_.schemeText()
               && text::areEqual(schemeSpecificPart(iri_, ofIri),
                                 schemeSpecificPart(base_, ofBase));
    }

    bool authoritiesDiffer() const
    {
        std::string ofIri;
        std::string ofBase;
        return iri_.hasAuthority()
               && !text::areEqual(decodedAuthority(iri_, ofIri), decodedAuthority(base_, ofBase));
    }

    void takeWhole()
    {
        assembly_.takeFront(iri_);
        takePathAndQuery();
        assembly_.flags().pathHasDotSegments = false; // not told of a whole copy; that is meant
    }

    // Path and query as they are stored, behind which nothing remains to be decided.
    void takePathAndQuery()
    {
        if (!iri_.flags_.pathIsEmpty)
            assembly_.takePath(iri_);
        assembly_.takeBack(iri_);
        assembly_.finish(readsTheSame_);
    }

    // Scheme and authority are the base's, and stripped.
    void takeDifference(View path)
    {
        const bool pathIsEmpty = iri_.flags_.pathIsEmpty;
        const bool baseHasPath = !base_.flags_.pathIsEmpty;
        const bool isBare = pathIsEmpty && !iri_.hasScheme() && !iri_.hasAuthority();
        if (isBare && baseHasPath)
            core::except::throwLogicError(
                "Cannot make relative to base as base has path but this does not");
        if (isBare && !iri_.hasQuery() && base_.hasQuery())
            core::except::throwLogicError(
                "Cannot make relative to base as base has query but this does not");
        if (!pathIsEmpty) {
            takePathDifference(path);
            assembly_.takeBack(iri_);
            return;
        }
        if (!hasQueryOfBase())
            assembly_.takeQuery(iri_);
        // An empty path would take the base's path or query, so that scheme or authority stay.
        if (!baseHasPath && (iri_.hasQuery() || !base_.hasQuery()))
            return;
        if (iri_.hasAuthority())
            assembly_.takeAuthority(iri_);
        else
            assembly_.takeScheme(iri_);
    }

    bool hasQueryOfBase() const
    {
        if (!iri_.hasQuery() || !base_.hasQuery())
            return false;
        std::string ofIri;
        std::string ofBase;
        return text::areEqual(iri_.laxText(Component::Query, Encoding::Decoded, ofIri),
                              base_.laxText(Component::Query, Encoding::Decoded, ofBase));
    }

    void takePathDifference(View path)
    {
        if (base_.flags_.pathIsEmpty) {
            assembly_.setDecodedPath(path, iri_.hasAbsolutePath());
            assembly_.flags().pathHasDotSegments = hasDotSegments(path);
            return;
        }
        if (!text::areEqual(pathOfBase(), path))
            setRelativePath(getRelativePath());
        else if (base_.hasQuery() && !iri_.hasQuery())
            setRelativePath(getMinimalRelativePath());
    }

    void setRelativePath(View path)
    {
        assembly_.flags().pathHasDotSegments = hasDotSegments(path);
        assembly_.setDecodedPath({}, path);
    }

    // The last segment of the path, named so that it does not take the base's query.
    View getMinimalRelativePath()
    {
        const View path = pathOfIri();
        path_ = Iri::FULL_STOP;
        if (path.empty() || path.back() == Iri::FORWARD_SLASH)
            return path_;
        const std::size_t slash = path.rfind(Iri::FORWARD_SLASH);
        if (slash == View::npos)
            return path_.append(1, Iri::FORWARD_SLASH).append(path);
        return path_.append(path.substr(slash));
    }

    // The path from the base's to this one's, as plain text; both have one, and they differ.
    View getRelativePath()
    {
        // A parsed value is compared as it is written, a built one as it is stored.
        if (!iri_.hasSourceText_.load())
            return relativePath(Encoding::Decoded);
        const View written = relativePath(Encoding::Iri);
        if (readsTheSame_)
            return written;
        if (auto decoded = decodeToUtf8(written))
            return path_ = *std::move(decoded);
        return path_ = text::toLaxUtf8(
                   PathCoder::iriToDecoded(text::fromLaxUtf8(written), {}).value_or(String()));
    }

    // A view of the value's own path, where that has it, or of one that is made.
    View relativePath(const Encoding& encoding)
    {
        const View from = withoutDotSegments(base_, encoding, baseWritten_, baseWithoutDots_);
        const View to = withoutDotSegments(iri_, encoding, written_, withoutDots_);
        if (text::areEqual(from, to))
            return {};
        const std::size_t fromSize = grammar::countPathSegments(from);
        if (fromSize == 0) // no path, or one that cannot be split
            return to;
        const std::size_t toSize = grammar::countPathSegments(to);
        const bool baseIsInRoot = fromSize == 1;
        if (baseIsInRoot && from.starts_with(Iri::FORWARD_SLASH) && toSize != 0
            && to.starts_with(Iri::FORWARD_SLASH))
            return to.substr(1);

        const auto common = toSize == 0 ? CommonSegments() : commonSegments(from, to);
        if (common.count == 0)
            return climbToTop(fromSize, to);
        return goOn(from, fromSize - common.count, to.substr(common.size));
    }

    static View withoutDotSegments(const Iri& iri, const Encoding& encoding, std::string& written,
                                   std::string& made)
    {
        const View path = iri.laxPath(encoding, written);
        const bool isLookedThrough = encoding == Encoding::Iri && iri.hasSourceText_.load();
        if (isLookedThrough && !iri.pathHasDotSegments())
            return path;
        return reference::removeRelativePathSegments(path, iri.hasAbsolutePath(), made);
    }

    struct CommonSegments {
        std::size_t count = 0;
        std::size_t size = 0; // of all of them
    };

    // The segments that are the same from the start. The last one of the shorter path never counts.
    // Both paths can be split, so that a slash behind the first segment's begins another segment.
    static CommonSegments commonSegments(View from, View to)
    {
        const std::size_t shorter = std::min(from.size(), to.size());
        const std::size_t difference = text::findDifference(from.data(), to.data(), shorter);
        CommonSegments common;
        for (std::size_t i = from.find_first_not_of(Iri::FORWARD_SLASH); i < difference; ++i) {
            if (from[i] != Iri::FORWARD_SLASH)
                continue;
            ++common.count;
            common.size = i;
        }
        return common;
    }

    // The whole path, from above all folders of the base.
    View climbToTop(std::size_t fromSize, View to)
    {
        const std::size_t count = std::max<std::size_t>(1, fromSize - 1);
        for (std::size_t i = 0; i < count; ++i)
            path_.append("../");
        const bool skipSlash = iri_.hasAbsolutePath() && !to.empty();
        return path_.append(to.substr(skipSlash ? 1 : 0));
    }

    // The way from the base up to where the paths part, @p below segments further up, and on to
    // @p rest, which begins with a slash.
    View goOn(View from, std::size_t below, View rest)
    {
        if (below == 1 && rest.size() > 1) // "./" does not stand in front of something
            return rest.substr(1);
        return path_ = upwards(from, below).append(rest);
    }

    // The way up. From a base three or more segments below, without a slash at its end, this is one
    // step short; that is meant.
    static std::string upwards(View from, std::size_t below)
    {
        if (below == 1)
            return std::string(1, Iri::FULL_STOP);
        const bool endsInSlash = from.back() == Iri::FORWARD_SLASH;
        const std::size_t count = endsInSlash ? below - 1 : below - 2;
        std::string result = "..";
        for (std::size_t i = 1; i < count; ++i)
            result.append("/..");
        return result;
    }

    // "//", authority, path and query; empty for a value that has no path at all. A view of the
    // value's text, if that has them as plain text, or else of @p made.
    static View schemeSpecificPart(const Iri& iri, std::string& made)
    {
        if (!iri.hasText(Component::Path))
            return {};
        const std::size_t begin = iri.ranges_.schemeEnd + (iri.hasScheme() ? 1 : 0);
        if (const auto decoded = decodedBetween(begin, iri.ranges_.queryEnd, iri, made))
            return *decoded;
        return made = iri.getNativeSsp(Encoding::Decoded);
    }

    // The same of the authority, which the value has.
    static View decodedAuthority(const Iri& iri, std::string& made)
    {
        if (iri.hasText(Component::Host))
            if (const auto decoded =
                    decodedBetween(iri.authorityBegin(), iri.ranges_.pathBegin, iri, made))
                return *decoded;
        return made = iri.getNativeAuthority(Encoding::Decoded);
    }

    // Several components of a value with the delimiters between them, which have a text. They are
    // decoded together if that is the same, as it is where nothing but escapes has to be undone:
    // none of them reaches across a delimiter.
    static std::optional<View> decodedBetween(std::size_t begin, std::size_t end, const Iri& iri,
                                              std::string& made)
    {
        const View text = iri.textBetween(begin, end);
        if (iri.areStoredIn(Form::Decoded))
            return text;
        if (!iri.hasSourceText_.load())
            return std::nullopt;
        auto decoded = decodeToUtf8(text);
        if (!decoded)
            return std::nullopt;
        return made = *std::move(decoded);
    }

    // The two paths as plain text.
    View pathOfIri() { return iri_.laxPath(Encoding::Decoded, decoded_); }
    View pathOfBase() { return base_.laxPath(Encoding::Decoded, baseDecoded_); }

    const Iri& iri_;
    const Iri& base_;
    const bool readsTheSame_;
    Assembly<String> assembly_;
    std::string decoded_; // the paths, if they had to be made: as plain text,
    std::string baseDecoded_;
    std::string written_; // as they are written,
    std::string baseWritten_;
    std::string withoutDots_; // and without dot segments
    std::string baseWithoutDots_;
    std::string path_;
};

template <class String>
void TemplateIRI<String>::doRelativise(const TemplateIRI& base, TemplateIRI& target) const
{
    Relativisation<String>(*this, base, target).run();
}

template ZKFLNETWORK_API void TemplateIRI<std::u32string>::doRelativise(const TemplateIRI& base,
                                                                        TemplateIRI& target) const;

} // namespace foundation::network::iri::detail
