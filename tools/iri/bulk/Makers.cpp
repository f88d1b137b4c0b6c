#include "Makers.hpp"

#include "../Components.hpp"
#include "../Nearest.hpp"
#include "../Reading.hpp"
#include "../Text.hpp"
#include "Fields.hpp"

#include <foundation/network/IRI.hpp>

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

namespace tool::bulk {
namespace {

    using foundation::network::IRI;

    constexpr std::string_view UNDECODABLE = "undecodable";
    constexpr std::string_view NO_RESULT = "no-result";

    /// `get FIELD...`: a column for each field.
    class GetFields : public RowMaker {
    public:
        explicit GetFields(std::vector<Field> fields, std::vector<std::string> names)
            : fields_(std::move(fields))
            , names_(std::move(names))
        {
        }

        std::vector<std::string> columns() const override { return names_; }

        Outcome make(std::string_view record, RowWriter& row) const override
        {
            const auto view = viewOf(record);
            if (!view)
                return judge(record);
            FieldReader reader(*view);
            std::string_view text;
            for (const Field& field : fields_) {
                const FieldReader::State state = reader.read(field, text);
                if (state == FieldReader::State::Undecodable)
                    return {UNDECODABLE, std::nullopt};
                if (state == FieldReader::State::Present && field.kind == FieldKind::PortNumber)
                    row.addNumber(*view->portNumber());
                else if (state == FieldReader::State::Present)
                    row.add(text);
                else
                    row.addAbsent();
            }
            return {};
        }

    private:
        std::vector<Field> fields_;
        std::vector<std::string> names_;
    };

    /// `get -f TEMPLATE`: one column.
    class FillTemplate : public RowMaker {
    public:
        explicit FillTemplate(Template pattern)
            : template_(std::move(pattern))
        {
        }

        std::vector<std::string> columns() const override { return {"text"}; }

        Outcome make(std::string_view record, RowWriter& row) const override
        {
            const auto view = viewOf(record);
            if (!view)
                return judge(record);
            FieldReader reader(*view);
            std::string text;
            if (!template_.append(text, reader))
                return {UNDECODABLE, std::nullopt};
            row.add(text);
            return {};
        }

    private:
        Template template_;
    };

    /// `check`: whether it is an IRI, which is always answered.
    class Check : public RowMaker {
    public:
        std::vector<std::string> columns() const override { return {"valid"}; }

        Outcome make(std::string_view record, RowWriter& row) const override
        {
            if (!viewOf(record))
                return judge(record);
            row.addBool(true);
            return {};
        }
    };

    /// `resolve` and `relativize`: the text of what is made with a base.
    class WithBase : public RowMaker {
    public:
        using Make = std::function<IRI(const IRI& iri, const IRI& base)>;

        WithBase(IRI base, const Form& form, Make make)
            : base_(std::move(base))
            , form_(form)
            , make_(std::move(make))
        {
        }

        std::vector<std::string> columns() const override { return {"result"}; }

        Outcome make(std::string_view record, RowWriter& row) const override
        {
            if (!viewOf(record))
                return judge(record);
            std::string result;
            const auto refusal = refusalOf(
                [&] { result = wholeText(make_(IRI(std::string(record)), base_), form_); });
            if (refusal)
                return {NO_RESULT, std::nullopt};
            row.add(result);
            return {};
        }

    private:
        IRI base_;
        const Form& form_;
        Make make_;
    };

    std::unique_ptr<RowMaker> readGet(const Arguments& words, std::string& why)
    {
        if (!words.empty() && (words.front() == "-f" || words.front() == "--format")) {
            if (words.size() != 2) {
                why = "get -f takes one TEMPLATE";
                return nullptr;
            }
            auto pattern = Template::read(words[1], why);
            return pattern ? std::make_unique<FillTemplate>(std::move(*pattern)) : nullptr;
        }
        if (words.empty()) {
            why = "get takes a FIELD: " + fieldNames();
            return nullptr;
        }
        std::vector<Field> fields;
        std::vector<std::string> names;
        for (const std::string& word : words) {
            const std::optional<Field> field = findField(word);
            if (!field) {
                why = noSuchField(word);
                return nullptr;
            }
            fields.push_back(*field);
            names.push_back(nameOf(*field));
        }
        return std::make_unique<GetFields>(std::move(fields), std::move(names));
    }

    std::unique_ptr<RowMaker> readParse(const Arguments& words, std::string& why)
    {
        if (!words.empty()) {
            why = "parse takes no argument here";
            return nullptr;
        }
        Arguments names;
        for (const PartName& part : PART_NAMES)
            names.emplace_back(part.field);
        return readGet(names, why);
    }

    std::unique_ptr<RowMaker> readCheck(const Arguments& words, std::string& why)
    {
        if (words.empty())
            return std::make_unique<Check>();
        why = "check takes no argument here";
        return nullptr;
    }

    std::unique_ptr<RowMaker> readWithBase(const Arguments& words, std::string& why,
                                           WithBase::Make make)
    {
        std::optional<std::string> base;
        const Form* form = &formAsGiven();
        for (const std::string& word : words) {
            constexpr std::string_view BASE = "--base=";
            constexpr std::string_view FORM = "--form=";
            if (word.starts_with(BASE)) {
                base = word.substr(BASE.size());
            } else if (word.starts_with(FORM)) {
                form = findForm(std::string_view(word).substr(FORM.size()));
                if (form == nullptr || form->encoding == IRI::Encoding::Decoded) {
                    const std::string_view name = std::string_view(word).substr(FORM.size());
                    why = "--form: not one of " + formNames(FormUse::Wholes) + ": "
                          + text::excerpt(name) + formSuggestion(name, FormUse::Wholes);
                    return nullptr;
                }
            } else {
                constexpr std::array OPTIONS{std::string_view("--base"),
                                             std::string_view("--form")};
                why = "neither --base=IRI nor --form=FORM: " + text::excerpt(word)
                      + suggestion(std::string_view(word).substr(0, word.find('=')), OPTIONS);
                return nullptr;
            }
        }
        if (!base) {
            why = "--base=IRI must be given";
            return nullptr;
        }
        Reading reading = readIri(*base);
        if (!reading.iri) {
            why = describeProblem("--base", *base, *reading.problem);
            return nullptr;
        }
        return std::make_unique<WithBase>(std::move(*reading.iri), *form, std::move(make));
    }

    std::unique_ptr<RowMaker> readResolve(const Arguments& words, std::string& why)
    {
        return readWithBase(
            words, why, [](const IRI& iri, const IRI& base) { return iri.resolveAgainst(base); });
    }

    std::unique_ptr<RowMaker> readRelativize(const Arguments& words, std::string& why)
    {
        return readWithBase(
            words, why, [](const IRI& iri, const IRI& base) { return iri.makeRelativeTo(base); });
    }

    constexpr BulkVerb BULK_VERBS[] = {
        {"get", "FIELD[:FORM]... | -f TEMPLATE", "components, or a text made of them", readGet},
        {"parse", "", "all components, a column each", readParse},
        {"check", "", "whether it is an IRI: true, or nothing", readCheck},
        {"resolve", "--base=IRI [--form=FORM]", "what it denotes against a base", readResolve},
        {"relativize", "--base=IRI [--form=FORM]", "what it is in terms of a base", readRelativize},
    };

} // namespace

std::span<const BulkVerb> allBulkVerbs() noexcept
{
    return BULK_VERBS;
}

} // namespace tool::bulk
