#include "reference/NaiveRecord.hpp"

#include "reference/NaivePaths.hpp"

#include <algorithm>
#include <cstddef>

namespace foundation::network::tests {

namespace naive = iri::naive;
using iri::Encoding;
using naive::Component;

namespace {

    constexpr std::size_t DECODED = 0;
    constexpr std::size_t IRI_FORM = 1;
    constexpr std::size_t ASCII_FORM = 2;

    std::size_t slotOf(Encoding form)
    {
        if (form == Encoding::Decoded)
            return DECODED;
        return form == Encoding::Iri || form == Encoding::IriStrict ? IRI_FORM : ASCII_FORM;
    }

    bool isStrict(Encoding form)
    {
        return form == Encoding::IriStrict || form == Encoding::AsciiStrict;
    }

    using Conversion = naive::MaybeText (*)(Component, const Text&, const naive::Context&);

    // From the form of the row to that of the column.
    constexpr Conversion conversions[3][3] = {
        {nullptr, &naive::decodedToIri, &naive::decodedToAscii},
        {&naive::iriToDecoded, nullptr, &naive::iriToAscii},
        {&naive::asciiToDecoded, &naive::asciiToIri, nullptr},
    };

    // From which form each is made: the first of the two that is there.
    constexpr std::size_t sources[3][2] = {
        {IRI_FORM, ASCII_FORM}, {ASCII_FORM, DECODED}, {IRI_FORM, DECODED}};

    Text fixed(const Text& text, Encoding form, bool brackets)
    {
        return isStrict(form) ? naive::fixEscapes(text, brackets) : text;
    }

    std::size_t findAny(const Text& text, const char32_t* characters)
    {
        return std::min(text.find_first_of(characters), text.size());
    }

    // Takes what stands in front of the first of some characters, and leaves these in the text.
    Text takeUntil(Text& text, const char32_t* characters)
    {
        const std::size_t end = findAny(text, characters);
        Text taken = text.substr(0, end);
        text.erase(0, end);
        return taken;
    }

    void parseAuthority(NaiveRecord& record, Text authority)
    {
        if (const std::size_t at = authority.find(U'@'); at != Text::npos) {
            record.setUserInfo(authority.substr(0, at), Encoding::Iri);
            authority.erase(0, at + 1);
        }
        const std::size_t literal = authority.find(U']') == Text::npos ? 0 : authority.find(U']');
        const std::size_t colon = authority.find(U':', literal);
        record.setHost(authority.substr(0, colon), Encoding::Iri);
        if (colon != Text::npos)
            record.port = authority.substr(colon + 1);
    }

} // namespace

NaiveComponent::NaiveComponent(Component kind, Text text, Encoding form)
    : kind_(kind)
    , primary_(slotOf(form))
{
    forms_[primary_] = std::move(text);
}

const Text& NaiveComponent::read(Encoding form)
{
    const std::size_t wanted = slotOf(form);
    if (!forms_[wanted]) {
        const std::size_t from =
            forms_[sources[wanted][0]] ? sources[wanted][0] : sources[wanted][1];
        forms_[wanted] = conversions[from][wanted](kind_, *forms_[from], context_).value_or(Text());
    }
    return *forms_[wanted];
}

Encoding NaiveComponent::storedForm() const
{
    constexpr Encoding stored[] = {Encoding::Decoded, Encoding::Iri, Encoding::Ascii};
    return stored[primary_];
}

void NaiveComponent::apply(const naive::Context& context)
{
    context_ = context;
    for (std::size_t i = 0; i < forms_.size(); ++i)
        if (i != primary_)
            forms_[i].reset();
}

void NaiveRecord::setUserInfo(const Text& text, Encoding form)
{
    userInfo.emplace(Component::UserInfo, text, form);
    componentsAreEmpty = false;
    if (path) {
        naive::Context context = path->context();
        context.userInfoPresent = true;
        path->apply(context);
    }
}

void NaiveRecord::setHost(const Text& text, Encoding form)
{
    host.emplace(Component::Host, text, form);
    componentsAreEmpty = false;
    if (path) {
        naive::Context context = path->context();
        context.hostPresent = true;
        path->apply(context);
    }
}

void NaiveRecord::setPath(const Text& text, Encoding form)
{
    path.emplace(Component::Path, text, form);
    naive::Context context;
    context.userInfoPresent = userInfo.has_value();
    context.hostPresent = host.has_value();
    path->apply(context);
    if (!text.empty())
        componentsAreEmpty = false;
}

void NaiveRecord::setQuery(const Text& text, Encoding form, bool isFormEncoded)
{
    query.emplace(Component::Query, text, form);
    naive::Context context;
    context.formEncoded = isFormEncoded;
    query->apply(context);
    componentsAreEmpty = false;
}

void NaiveRecord::setFragment(const Text& text, Encoding form)
{
    fragment.emplace(Component::Fragment, text, form);
    componentsAreEmpty = false;
}

void NaiveRecord::setSchemePresent()
{
    if (path) {
        naive::Context context = path->context();
        context.schemePresent = true;
        path->apply(context);
    }
}

void NaiveRecord::finish()
{
    isEmpty = componentsAreEmpty && !scheme && !port;
    hasAuthority = host.has_value();
    if (scheme) {
        setSchemePresent();
        isAbsolute = true;
        if (!hasAuthority)
            isOpaque = !hasAbsolutePath;
    }
}

Text NaiveRecord::pathText(Encoding form)
{
    return path ? path->read(form) : Text();
}

std::uint16_t NaiveRecord::portNumber() const
{
    std::uint32_t number = 0;
    for (const char32_t digit : *port)
        number = number * 10 + (digit - U'0');
    return static_cast<std::uint16_t>(number);
}

Text NaiveRecord::authority(Encoding form)
{
    Text result;
    if (userInfo)
        result = userInfo->read(form) + U"@";
    result = fixed(result + host->read(form), form, false);
    return port ? result + U":" + *port : result;
}

Text NaiveRecord::schemeSpecificPart(Encoding form)
{
    Text result;
    if (hasAuthority)
        result = U"//" + authority(form);
    result += fixed(pathText(form), form, true);
    if (hasQuery)
        result += U"?" + fixed(query->read(form), form, true);
    return result;
}

Text NaiveRecord::whole(Encoding form)
{
    if (form == Encoding::Iri && source)
        return *source;
    Text& plain = wholes[slotOf(form)];
    if (isEmpty)
        return plain;
    Text& wanted = !isStrict(form) ? plain : wholes[form == Encoding::IriStrict ? 3 : 4];
    if (!wanted.empty())
        return wanted;

    Text strictText;
    Text plainText;
    const auto append = [&](const Text& mark, const Text& component, bool brackets) {
        plainText += mark + component;
        strictText += mark + naive::fixEscapes(component, brackets);
    };
    if (scheme)
        plainText = strictText = *scheme + U":";
    if (hasAuthority)
        append(U"//", authority(form), false);
    append(U"", path.value().read(form), true);
    if (hasQuery)
        append(U"?", query->read(form), true);
    if (hasFragment)
        append(U"#", fragment->read(form), true);

    if (plain.empty())
        plain = plainText;
    if (wanted.empty())
        wanted = strictText;
    return wanted;
}

NaiveRecord parsed(const Text& text)
{
    NaiveRecord record;
    record.source = text;
    if (text.empty()) {
        record.setPath({}, Encoding::Iri);
        return record;
    }

    Text rest = text;
    if (const std::size_t end = findAny(rest, U":/?#"); end < rest.size() && rest[end] == U':') {
        record.scheme = rest.substr(0, end);
        rest.erase(0, end + 1);
    }
    if (rest.substr(0, 2) == U"//") {
        rest.erase(0, 2);
        parseAuthority(record, takeUntil(rest, U"/?#"));
    }
    const Text path = takeUntil(rest, U"?#");
    record.setPath(path, Encoding::Iri);
    if (!rest.empty() && rest[0] == U'?') {
        record.setQuery(takeUntil(rest, U"#").substr(1), Encoding::Iri, false);
        record.hasQuery = true;
    }
    if (!rest.empty()) {
        record.setFragment(rest.substr(1), Encoding::Iri);
        record.hasFragment = true;
    }
    record.pathIsEmpty = path.empty();
    record.hasAbsolutePath = path.substr(0, 1) == U"/";
    record.pathHasDotSegments = naiveHasDotSegments(path);
    record.finish();
    record.isEmpty = false;
    return record;
}

NaiveRecord built(const NaiveArguments& arguments)
{
    NaiveRecord record;
    record.scheme = arguments.scheme;
    if (arguments.userInfo)
        record.setUserInfo(*arguments.userInfo, Encoding::Decoded);
    if (arguments.host)
        record.setHost(*arguments.host, Encoding::Decoded);
    if (arguments.port)
        for (const char digit : std::to_string(*arguments.port))
            record.port = record.port.value_or(Text()) + static_cast<char32_t>(digit);

    const Text path = arguments.path.value_or(Text());
    record.setPath(path, Encoding::Decoded);
    record.pathIsEmpty = path.empty();
    record.pathHasDotSegments = naiveHasDotSegments(path);
    record.hasAbsolutePath = path.substr(0, 1) == U"/";
    if (arguments.query) {
        record.formEncoded = arguments.queryIsFormEncoded || arguments.queryHasEscapes;
        record.setQuery(arguments.queryIsFormEncoded ? naive::encodeNonAscii(*arguments.query)
                                                     : *arguments.query,
                        Encoding::Decoded, record.formEncoded);
        record.hasQuery = true;
    }
    if (arguments.fragment) {
        record.setFragment(*arguments.fragment, Encoding::Decoded);
        record.hasFragment = true;
    }
    record.finish();
    return record;
}

} // namespace foundation::network::tests
