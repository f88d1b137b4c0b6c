#include "reference/NaiveReference.hpp"

#include "reference/NaivePaths.hpp"

#include <foundation/core/except/Exception.hpp>

#include <algorithm>
#include <cstddef>
#include <stdexcept>

namespace foundation::network::tests {

using iri::Encoding;

namespace {

    using Segments = NaiveSegments;

    Text withoutFirst(const Text& text)
    {
        return text.substr(std::min<std::size_t>(1, text.size()));
    }

    Segments mergedAsItIs(const Text& path, Segments segments)
    {
        if (!segments.empty() && segments.back() != U"/" && !path.empty() && !beginsWithSlash(path))
            segments.push_back(U"/");
        segments.push_back(path);
        return segments;
    }

    Text decodedPath(NaiveRecord& record)
    {
        return record.pathText(Encoding::Decoded);
    }

    // The path of a record put behind a list.
    Text resolvedPath(NaiveRecord& record, const Segments& segments, bool absolute)
    {
        const Text path = decodedPath(record);
        return naiveJoin(record.pathHasDotSegments ? naiveMerge(path, segments, absolute)
                                                   : mergedAsItIs(path, segments));
    }

    void storePath(NaiveRecord& target, const Text& path)
    {
        if (!path.empty()) {
            target.pathIsEmpty = false;
            target.hasAbsolutePath = beginsWithSlash(path);
        }
        target.setPath(path);
    }

    void copyAuthority(NaiveRecord& target, const NaiveRecord& from)
    {
        if (from.userInfo)
            target.setUserInfo(from.userInfo->stored(), from.userInfo->storedForm());
        if (from.host)
            target.setHost(from.host->stored(), from.host->storedForm());
        if (from.port)
            target.port = from.port;
    }

    void copyQuery(NaiveRecord& target, const NaiveRecord& from)
    {
        if (!from.hasQuery)
            return;
        target.setQuery(from.query->stored(), from.query->storedForm(), from.formEncoded);
        target.hasQuery = true;
        target.formEncoded = from.formEncoded;
    }

    void copyFragment(NaiveRecord& target, const NaiveRecord& from)
    {
        if (!from.hasFragment)
            return;
        target.setFragment(from.fragment->stored(), from.fragment->storedForm());
        target.hasFragment = true;
    }

    // The path of a reference that has a scheme or an authority of its own.
    void resolveOwnPath(NaiveRecord& target, NaiveRecord& reference, bool absolute)
    {
        if (reference.pathIsEmpty)
            return;
        if (reference.pathHasDotSegments) {
            storePath(target, resolvedPath(reference, {}, absolute));
        } else {
            target.setPath(decodedPath(reference));
            target.pathIsEmpty = false;
            target.hasAbsolutePath = reference.hasAbsolutePath;
        }
    }

    // The path of a reference that has neither, and a path that is not empty.
    void resolveAgainstPath(NaiveRecord& target, NaiveRecord& reference, NaiveRecord& base,
                            bool absolute)
    {
        const Text path = decodedPath(reference);
        if (reference.hasAbsolutePath) {
            target.pathIsEmpty = false;
            if (reference.pathHasDotSegments) {
                storePath(target, resolvedPath(reference, {}, absolute));
            } else {
                target.setPath(path);
                target.hasAbsolutePath = true;
            }
        } else if (base.hasAuthority && base.pathIsEmpty) {
            target.setPath(U"/" + path);
            target.pathIsEmpty = false;
            target.hasAbsolutePath = true;
        } else if (reference.pathHasDotSegments || base.pathHasDotSegments) {
            Text basePath = decodedPath(base);
            if (base.pathHasDotSegments)
                basePath = naiveWithoutDots(basePath, base.hasAbsolutePath);
            Segments segments = naiveSplit(basePath);
            const bool wasSingle = segments.size() == 1;
            if (!segments.empty())
                segments.pop_back();
            if (wasSingle && base.hasAbsolutePath)
                segments.push_back(U"/");
            storePath(target, resolvedPath(reference, segments, absolute));
        } else {
            const Text basePath = decodedPath(base);
            const std::size_t slash = basePath.rfind(U'/');
            const Text kept = slash == Text::npos ? Text() : basePath.substr(0, slash + 1);
            storePath(target, kept + path);
        }
    }

    [[noreturn]] void refuse(const char* why)
    {
        throw core::except::AnonymousInternalException<std::logic_error>(std::logic_error(why));
    }

    Text minimalPath(const Text& path)
    {
        if (path.empty() || path.back() == U'/')
            return U".";
        const std::size_t slash = path.rfind(U'/');
        return slash == Text::npos ? U"./" + path : U"." + path.substr(slash);
    }

    Text repeated(const Text& text, std::size_t count)
    {
        Text result;
        for (std::size_t i = 0; i < count; ++i)
            result += text;
        return result;
    }

    // From one path without dot segments to another, different one.
    Text between(const Text& from, const Text& to, bool toIsAbsolute)
    {
        const Segments base = naiveSplit(from);
        if (base.empty())
            return to;
        const Segments target = naiveSplit(to);
        if (base.size() == 1 && beginsWithSlash(base[0]) && !target.empty()
            && beginsWithSlash(target[0]))
            return withoutFirst(to);

        // The last segment of the shorter one is never in common.
        const std::size_t shorter = std::min(base.size(), target.size());
        std::size_t common = 0;
        while (common + 1 < shorter && base[common] == target[common])
            ++common;

        Text way;
        if (common == 0) {
            way = repeated(U"../", std::max<std::size_t>(1, base.size() - 1));
            way += toIsAbsolute ? withoutFirst(to) : to;
        } else {
            const std::size_t left = base.size() - common;
            if (left == 1) {
                way = U".";
            } else {
                const std::size_t up = left - 1 - (base.back() == U"/" ? 0 : 1);
                way = up <= 1 ? U".." : repeated(U"../", up - 1) + U"..";
            }
            for (std::size_t i = common; i < target.size(); ++i) {
                if (i == common && !beginsWithSlash(target[i]))
                    way += U"/";
                way += target[i];
            }
        }
        if (way.size() >= 3 && way.substr(0, 2) == U"./")
            way.erase(0, 2);
        return way;
    }

    Text relativePath(NaiveRecord& iri, NaiveRecord& base)
    {
        const Encoding form = iri.source ? Encoding::Iri : Encoding::Decoded;
        const Text from = naiveWithoutDots(base.pathText(form), base.hasAbsolutePath);
        const Text to = naiveWithoutDots(iri.pathText(form), iri.hasAbsolutePath);
        if (from == to)
            return {};
        const Text way = between(from, to, iri.hasAbsolutePath);
        if (form == Encoding::Decoded)
            return way;
        return iri::naive::iriToDecoded(iri::naive::Component::Path, way, {}).value_or(Text());
    }

    // Path and query of a reference that keeps more than these.
    void copyTail(NaiveRecord& target, const NaiveRecord& from, bool copyDotSegmentsFlag)
    {
        target.pathIsEmpty = from.pathIsEmpty;
        if (from.pathIsEmpty) {
            target.setPath({});
        } else {
            target.setPath(from.path->stored(), from.path->storedForm());
            target.hasAbsolutePath = from.hasAbsolutePath;
            if (copyDotSegmentsFlag)
                target.pathHasDotSegments = from.pathHasDotSegments;
        }
        copyQuery(target, from);
        target.finish();
    }

    void storeRelativePath(NaiveRecord& target, const Text& path)
    {
        target.pathIsEmpty = path.empty();
        if (path.empty())
            return;
        target.pathHasDotSegments = naiveHasDotSegments(path);
        target.hasAbsolutePath = beginsWithSlash(path);
        target.setPath(path);
    }

    // Path and query where scheme and authority are left out.
    void relativiseTail(NaiveRecord& target, NaiveRecord& iri, NaiveRecord& base, const Text& path)
    {
        const bool isBare = iri.pathIsEmpty && !iri.scheme && !iri.hasAuthority;
        if (isBare && !base.pathIsEmpty)
            refuse("Cannot make relative to base as base has path but this does not");
        if (iri.hasQuery) {
            const bool sameQuery =
                base.hasQuery
                && iri.query->read(Encoding::Decoded) == base.query->read(Encoding::Decoded);
            if (!sameQuery)
                copyQuery(target, iri);
        } else if (isBare && base.hasQuery) {
            refuse("Cannot make relative to base as base has query but this does not");
        }

        if (iri.pathIsEmpty) {
            const bool baseAddsNothing = base.pathIsEmpty && (iri.hasQuery || !base.hasQuery);
            if (!baseAddsNothing && iri.hasAuthority)
                copyAuthority(target, iri);
            else if (!baseAddsNothing)
                target.scheme = iri.scheme;
            return;
        }

        if (base.pathIsEmpty) {
            target.pathIsEmpty = false;
            if (!path.empty()) {
                target.setPath(path);
                target.pathHasDotSegments = naiveHasDotSegments(path);
                target.hasAbsolutePath = iri.hasAbsolutePath;
            }
        } else if (decodedPath(base) != path) {
            storeRelativePath(target, relativePath(iri, base));
        } else if (base.hasQuery && !iri.hasQuery) {
            storeRelativePath(target, minimalPath(path));
        }
        copyQuery(target, iri);
    }

} // namespace

NaiveRecord naiveResolve(NaiveRecord& reference, NaiveRecord& base)
{
    NaiveRecord target;
    if (reference.isEmpty) {
        if (!base.isEmpty)
            target = base;
        target.hasFragment = false;
        target.fragment.reset();
        return target;
    }

    const bool absolute = reference.hasAbsolutePath || base.hasAbsolutePath;
    if (reference.scheme) {
        target.scheme = reference.scheme;
        copyAuthority(target, reference);
        resolveOwnPath(target, reference, absolute);
        copyQuery(target, reference);
    } else {
        if (reference.hasAuthority) {
            copyAuthority(target, reference);
            resolveOwnPath(target, reference, absolute);
            copyQuery(target, reference);
        } else if (reference.pathIsEmpty) {
            target.pathIsEmpty = base.pathIsEmpty;
            target.setPath(base.pathIsEmpty ? Text() : decodedPath(base));
            if (!base.pathIsEmpty)
                target.hasAbsolutePath = base.hasAbsolutePath;
            if (reference.hasQuery) {
                copyQuery(target, reference);
            } else if (base.hasQuery) {
                // How the reference's query was made decides how that of the base is taken.
                target.setQuery(base.query->stored(), base.query->storedForm(),
                                reference.formEncoded);
                target.hasQuery = true;
                target.formEncoded = base.formEncoded;
            }
        } else {
            resolveAgainstPath(target, reference, base, absolute);
            copyQuery(target, reference);
        }
        if (!reference.hasAuthority)
            copyAuthority(target, base);
        if (base.scheme) {
            target.scheme = base.scheme;
            target.setSchemePresent();
        }
    }
    copyFragment(target, reference);
    target.finish();
    if (target.pathIsEmpty)
        target.setPath({});
    return target;
}

NaiveRecord naiveRelativise(NaiveRecord& iri, NaiveRecord& base)
{
    if (!iri.hasAbsolutePath && base.hasAbsolutePath && !iri.pathIsEmpty)
        refuse("Cannot make relative to base. Already relative");
    if (iri.hasAbsolutePath && !base.hasAbsolutePath && !decodedPath(base).empty())
        refuse("Cannot make relative. Base is relative");

    NaiveRecord target;
    copyFragment(target, iri);
    const bool sameScheme = iri.scheme.value_or(Text()) == base.scheme.value_or(Text());
    if (sameScheme
        && iri.schemeSpecificPart(Encoding::Decoded)
               == base.schemeSpecificPart(Encoding::Decoded)) {
        target.setPath({});
        target.isEmpty = target.componentsAreEmpty;
        return target;
    }

    const Text path = iri.pathIsEmpty ? Text() : decodedPath(iri);
    if (iri.scheme && iri.scheme != base.scheme) {
        target.scheme = iri.scheme;
        copyAuthority(target, iri);
        copyTail(target, iri, false);
        return target;
    }
    if (!iri.scheme && base.scheme)
        refuse("Cannot make relative to base as base has scheme but this does not");
    if (!iri.scheme && base.hasAuthority && !iri.hasAuthority)
        refuse("Cannot make relative to base as base has authority but this does not");

    if (!iri.hasAuthority && base.hasAuthority) {
        target.scheme = iri.scheme;
        copyTail(target, iri, true);
        return target;
    }
    if (iri.hasAuthority
        && (!base.hasAuthority
            || iri.authority(Encoding::Decoded) != base.authority(Encoding::Decoded))) {
        copyAuthority(target, iri);
        copyTail(target, iri, true);
        return target;
    }

    relativiseTail(target, iri, base, path);
    target.finish();
    if (target.pathIsEmpty)
        target.setPath({});
    return target;
}

} // namespace foundation::network::tests
