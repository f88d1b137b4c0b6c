// The transformation of references (RFC 3986, 5.2.2), component by component.

#include "iri/Assembly.hpp"
#include "iri/Reading.ipp"
#include "iri/grammar/PathSegmentGrammar.hpp"
#include "reference/PathSegments.hpp"

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <cstddef>

namespace foundation::network::iri::detail {

/// One reference on its way to the value that it denotes against a base.
///
/// The branches are those of the RFC in its strict reading. Paths are read, merged and stored as
/// plain text.
/// Departure: an escaped slash or dot becomes a real one in the merge.
/// Departure: dot segments are removed only where `pathHasDotSegments` says that there are some.
template <class String>
class Resolution {
public:
    using Iri = TemplateIRI<String>;
    using View = typename Iri::View;

    Resolution(const Iri& reference, const Iri& base, Iri& target)
        : reference_(reference)
        , base_(base)
        , target_(target)
        , absolute_(reference.hasAbsolutePath() || base.hasAbsolutePath())
    {
    }

    void run()
    {
        if (reference_.isEmpty()) {
            target_ = base_;
            // Departure: a base that was parsed keeps its text, fragment and all, and shows it
            // where the text itself is asked for; that is meant.
            Assembly<String>::dropFragment(target_);
            return;
        }
        Assembly<String> assembly(target_);
        if (reference_.hasScheme()) {
            assembly.takeFront(reference_);
            takeReferencePath(assembly);
            assembly.takeBack(reference_);
        } else if (reference_.hasAuthority()) {
            assembly.takeAuthority(reference_);
            takeReferencePath(assembly);
            assembly.takeBack(reference_);
            assembly.takeScheme(base_);
        } else {
            if (!reference_.flags_.pathIsEmpty) {
                mergePaths(assembly);
                assembly.takeBack(reference_);
            } else {
                takeBasePath(assembly);
                takeReferenceOrBaseQuery(assembly);
            }
            assembly.takeFront(base_);
        }
        assembly.finish(reference_.flags_.readsTheSame && base_.flags_.readsTheSame);
    }

private:
    void takeReferencePath(Assembly<String>& assembly)
    {
        if (reference_.flags_.pathIsEmpty)
            return;
        if (reference_.pathHasDotSegments())
            setResolvedPath(assembly, referencePath());
        else
            assembly.setDecodedPath(referencePath(), reference_.hasAbsolutePath());
    }

    void takeBasePath(Assembly<String>& assembly)
    {
        if (!base_.flags_.pathIsEmpty)
            assembly.setDecodedPath(basePath(), base_.hasAbsolutePath());
    }

    void takeReferenceOrBaseQuery(Assembly<String>& assembly)
    {
        if (!reference_.hasQuery() && base_.hasQuery()) {
            // Read as the reference's form, not the base's; that is meant.
            assembly.takeQuery(base_, reference_.flags_.formEncoded);
            assembly.takeFragment(reference_);
        } else {
            assembly.takeBack(reference_);
        }
    }

    // RFC 3986, 5.2.3
    void mergePaths(Assembly<String>& assembly)
    {
        if (reference_.hasAbsolutePath()) {
            takeReferencePath(assembly);
            return;
        }
        if (base_.hasAuthority() && base_.flags_.pathIsEmpty) {
            // Departure: dot segments stay on this branch.
            assembly.setDecodedPath("/", referencePath());
            return;
        }
        if (reference_.pathHasDotSegments() || base_.pathHasDotSegments()) {
            mergeDottedPaths(assembly);
            return;
        }
        const View path = basePath();
        const std::size_t directory = path.rfind(Iri::FORWARD_SLASH) + 1; // 0 without a slash
        assembly.setDecodedPath(path.substr(0, directory), referencePath());
    }

    void mergeDottedPaths(Assembly<String>& assembly)
    {
        const View from = basePathWithoutDots();
        const View path = referencePath();
        // At once, since a list can be many times as large as its path; two slashes may be added.
        segments_.reserve(grammar::countPathSegments(from) + grammar::countPathSegments(path) + 2);
        splitDirectory(from);
        setResolvedPath(assembly, path);
    }

    // The segments of the base's path without its last one. A path that cannot be split has none.
    void splitDirectory(View path)
    {
        grammar::splitPathSegments(path, segments_);
        if (segments_.empty())
            return;
        const bool wasOnlyOne = segments_.size() == 1;
        segments_.pop_back();
        if (wasOnlyOne && base_.hasAbsolutePath())
            segments_.emplace_back("/");
    }

    // The reference's path, merged onto the segments gathered so far.
    void setResolvedPath(Assembly<String>& assembly, View path)
    {
        std::string slashed;
        reference::mergePathSegments(path, segments_, absolute_, reference_.pathHasDotSegments(),
                                     slashed);
        path_ = reference::joinPathSegments(segments_);
        assembly.setDecodedPath({}, path_);
    }

    // The two paths as plain text.
    View referencePath() { return reference_.laxPath(Encoding::Decoded, referencePath_); }
    View basePath() { return base_.laxPath(Encoding::Decoded, basePath_); }

    View basePathWithoutDots()
    {
        const View path = basePath();
        if (!base_.pathHasDotSegments())
            return path;
        return reference::removeRelativePathSegments(path, base_.hasAbsolutePath(), path_);
    }

    const Iri& reference_;
    const Iri& base_;
    Iri& target_;
    const bool absolute_; // whether a merged path begins with "/"
    reference::Segments segments_;
    std::string referencePath_; // if it had to be made
    std::string basePath_;
    std::string path_; // what is made of them; the list may show it until they are joined
};

template <class String>
void TemplateIRI<String>::doResolve(const TemplateIRI& base, TemplateIRI& target) const
{
    Resolution<String>(*this, base, target).run();
}

template ZKFLNETWORK_API void TemplateIRI<std::u32string>::doResolve(const TemplateIRI& base,
                                                                     TemplateIRI& target) const;

} // namespace foundation::network::iri::detail
