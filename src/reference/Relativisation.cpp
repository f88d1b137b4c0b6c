// The inverse of resolution, as far as it goes.

#include "except/Throw.hpp"
#include "iri/Assembly.hpp"
#include "iri/ComponentCoders.hpp"
#include "iri/DotSegments.hpp"
#include "iri/Reading.ipp"
#include "iri/Serialisation.ipp"
#include "iri/grammar/PathSegmentGrammar.hpp"
#include "reference/PathSegments.hpp"
#include "text/Comparing.hpp"

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <algorithm>
#include <cstddef>

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

    Relativisation(const Iri& iri, const Iri& base)
        : iri_(iri)
        , base_(base)
        , readsTheSame_(iri.flags_.readsTheSame && base.flags_.readsTheSame)
        , assembly_(target_)
    {
    }

    Iri run()
    {
        checkPaths();
        assembly_.takeFragment(iri_);
        if (namesSameResource()) {
            assembly_.finish(readsTheSame_);
            return std::move(target_);
        }
        // Read before anything is decided, so that a path that cannot be decoded fails on every
        // road.
        const View path = iri_.flags_.pathIsEmpty ? View() : decodedPath(iri_);
        const bool sameScheme = iri_.schemeText() == base_.schemeText();
        if (iri_.hasScheme() && !sameScheme) {
            takeWhole();
            return std::move(target_);
        }
        checkSchemeAndAuthority();
        if (iri_.hasAuthority() != base_.hasAuthority() || authoritiesDiffer()) {
            // A reference without a scheme would take the base's authority.
            if (!iri_.hasAuthority())
                assembly_.takeScheme(iri_);
            assembly_.takeAuthority(iri_);
            takePathAndQuery();
            return std::move(target_);
        }
        takeDifference(path);
        assembly_.finish(readsTheSame_);
        return std::move(target_);
    }

private:
    void checkPaths() const
    {
        if (!iri_.hasAbsolutePath() && base_.hasAbsolutePath() && !iri_.flags_.pathIsEmpty)
            core::except::throwLogicError("Cannot make relative to base. Already relative");
        if (iri_.hasAbsolutePath() && !base_.hasAbsolutePath() && !decodedPath(base_).empty())
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
        String ofIri;
        String ofBase;
        return iri_.schemeText() == base_.schemeText()
               && text::areEqual(schemeSpecificPart(iri_, ofIri),
                                 schemeSpecificPart(base_, ofBase));
    }

    bool authoritiesDiffer() const
    {
        String ofIri;
        String ofBase;
        return iri_.hasAuthority()
               && !text::areEqual(decodedAuthority(iri_, ofIri), decodedAuthority(base_, ofBase));
    }

    void takeWhole()
    {
        assembly_.takeScheme(iri_);
        assembly_.takeAuthority(iri_);
        takePathAndQuery();
        assembly_.flags().pathHasDotSegments = false; // not told of a whole copy; that is meant
    }

    // Path and query as they are stored, behind which nothing remains to be decided.
    void takePathAndQuery()
    {
        if (!iri_.flags_.pathIsEmpty)
            assembly_.takePath(iri_);
        assembly_.takeQuery(iri_);
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
            assembly_.takeQuery(iri_);
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
        return iri_.hasQuery() && base_.hasQuery()
               && iri_.componentText(Component::Query, Encoding::Decoded)
                      == base_.componentText(Component::Query, Encoding::Decoded);
    }

    void takePathDifference(View path)
    {
        if (base_.flags_.pathIsEmpty) {
            assembly_.setDecodedPath(path, iri_.hasAbsolutePath());
            assembly_.flags().pathHasDotSegments = hasDotSegments(path);
            return;
        }
        if (!text::areEqual(decodedPath(base_), path))
            setRelativePath(getRelativePath());
        else if (base_.hasQuery() && !iri_.hasQuery())
            setRelativePath(getMinimalRelativePath());
    }

    void setRelativePath(String&& path)
    {
        path_ = std::move(path);
        assembly_.flags().pathHasDotSegments = hasDotSegments(path_);
        assembly_.setDecodedPath({}, path_);
    }

    // The last segment of the path, named so that it does not take the base's query.
    String getMinimalRelativePath() const
    {
        const View path = decodedPath(iri_);
        String result(1, Iri::FULL_STOP);
        if (path.empty() || path.back() == Iri::FORWARD_SLASH)
            return result;
        const std::size_t slash = path.rfind(Iri::FORWARD_SLASH);
        if (slash == View::npos)
            return result.append(1, Iri::FORWARD_SLASH).append(path);
        return result.append(path.substr(slash));
    }

    // The path from the base's to this one's, as plain text; both have one, and they differ.
    String getRelativePath() const
    {
        // A parsed value is compared as it is written, a built one as it is stored.
        if (!iri_.hasSourceText_.load())
            return relativePath(Encoding::Decoded);
        String written = relativePath(Encoding::Iri);
        if (readsTheSame_)
            return written;
        return PathCoder::iriToDecoded(written, {}).value_or(String());
    }

    String relativePath(const Encoding& encoding) const
    {
        String ofBase;
        String ofIri;
        const View from = reference::withoutDotSegments(base_.pathText(encoding),
                                                        base_.hasAbsolutePath(), ofBase);
        const View to =
            reference::withoutDotSegments(iri_.pathText(encoding), iri_.hasAbsolutePath(), ofIri);
        if (text::areEqual(from, to))
            return {};
        const std::size_t fromSize = grammar::countPathSegments(from);
        if (fromSize == 0) // no path, or one that cannot be split
            return String(to);
        const std::size_t toSize = grammar::countPathSegments(to);
        const bool baseIsInRoot = fromSize == 1;
        if (baseIsInRoot && from.starts_with(Iri::FORWARD_SLASH) && toSize != 0
            && to.starts_with(Iri::FORWARD_SLASH))
            return String(to.substr(1));

        View rest = to;
        const std::size_t common = takeCommonSegments(from, fromSize, rest, toSize);
        String result = common == 0 ? climbToTop(fromSize, to)
                                    : upwards(from, fromSize - common).append(separated(rest));
        if (result.size() >= 3 && result.starts_with(U"./"))
            result.erase(0, 2);
        return result;
    }

    // Takes off @p to, and counts, the segments that are the same from the start. The last one of
    // the shorter path never counts.
    static std::size_t takeCommonSegments(View from, std::size_t fromSize, View& to,
                                          std::size_t toSize)
    {
        std::size_t common = 0;
        for (const std::size_t shorter = std::min(fromSize, toSize); common + 1 < shorter;
             ++common) {
            View rest = to;
            if (!text::areEqual(grammar::takePathSegment(from), grammar::takePathSegment(rest)))
                break;
            to = rest;
        }
        return common;
    }

    // The whole path, from above all folders of the base.
    String climbToTop(std::size_t fromSize, View to) const
    {
        const std::size_t count = std::max<std::size_t>(1, fromSize - 1);
        String result;
        for (std::size_t i = 0; i < count; ++i)
            result.append(U"../");
        const bool skipSlash = iri_.hasAbsolutePath() && !to.empty();
        return result.append(to.substr(skipSlash ? 1 : 0));
    }

    // The way from the base up to where the paths part, @p below segments further up. From a base
    // three or more segments below, without a slash at its end, this is one step short; that is
    // meant.
    static String upwards(View from, std::size_t below)
    {
        if (below == 1)
            return String(1, Iri::FULL_STOP);
        const bool endsInSlash = from.back() == Iri::FORWARD_SLASH;
        const std::size_t count = endsInSlash ? below - 1 : below - 2;
        String result = U"..";
        for (std::size_t i = 1; i < count; ++i)
            result.append(U"/..");
        return result;
    }

    // What goes on behind a segment, with the slash that parts it from that.
    static String separated(View rest)
    {
        String result;
        if (!rest.starts_with(Iri::FORWARD_SLASH))
            result.push_back(Iri::FORWARD_SLASH);
        return result.append(rest);
    }

    // "//", authority, path and query; empty for a value that has no path at all. A view of the
    // value's text, if that has them as plain text, or else of @p made.
    static View schemeSpecificPart(const Iri& iri, String& made)
    {
        if (!iri.hasText(Component::Path))
            return {};
        if (iri.areStoredIn(Form::Decoded))
            return iri.textBetween(iri.ranges_.schemeEnd + (iri.hasScheme() ? 1 : 0),
                                   iri.ranges_.queryEnd);
        return made = iri.getNativeSsp(Encoding::Decoded);
    }

    // The same of the authority, which the value has.
    static View decodedAuthority(const Iri& iri, String& made)
    {
        if (iri.hasText(Component::Host) && iri.areStoredIn(Form::Decoded))
            return iri.textBetween(iri.authorityBegin(), iri.ranges_.pathBegin);
        return made = iri.getNativeAuthority(Encoding::Decoded);
    }

    static View decodedPath(const Iri& iri) { return iri.pathText(Encoding::Decoded); }

    const Iri& iri_;
    const Iri& base_;
    const bool readsTheSame_;
    Iri target_;
    Assembly<String> assembly_;
    String path_;
};

template <class String>
TemplateIRI<String> TemplateIRI<String>::doRelativise(const TemplateIRI& base) const
{
    return Relativisation<String>(*this, base).run();
}

template ZKFLNETWORK_API TemplateIRI<std::u32string> TemplateIRI<std::u32string>::doRelativise(
    const TemplateIRI& base) const;

} // namespace foundation::network::iri::detail
