#pragma once

#include "Components.hpp"
#include "Forms.hpp"
#include "MemberWriter.hpp"
#include "Output.hpp"
#include "Reading.hpp"
#include "Records.hpp"
#include "RowFormat.hpp"

#include <foundation/network/IRI.hpp>

#include <span>
#include <string>
#include <string_view>

namespace tool {

/// The members that records of components may have, in their order.
std::span<const std::string_view> componentColumns() noexcept;

/// What the verbs say of their records, in the same way, in each format.
class Answers {
public:
    /// @param columns  the members that a record may have, in their order
    /// @param subject  under what name a record stands among them, if it is not to be an IRI
    Answers(RowFormat format, Output& output, std::span<const std::string_view> columns,
            std::string_view subject = "iri")
        : format_(format)
        , subject_(subject)
        , output_(output)
        , writer_(format, columns)
    {
    }

    /// As above, and writes the names of the columns if that is asked for.
    Answers(const FormatOptions& options, Output& output, std::span<const std::string_view> columns,
            std::string_view subject = "iri");

    /// Whether records are written with all their members, as JSON or tab-separated values.
    bool haveMembers() const noexcept
    {
        return format_ == RowFormat::Json || format_ == RowFormat::Tsv;
    }

    /// @{
    /// A record with members that a verb adds by itself.
    MemberWriter& begin();
    void end();
    /// @}

    /// Says that a record is not UTF-8, if it is not, with those bytes escaped.
    /// @returns whether it is not
    bool refuseInvalidUtf8(const Record& record);

    /// Says that a record is no IRI. What of it is not UTF-8 is escaped.
    void refuse(const Record& record, const Reading& reading);

    /// Says that a record gives no IRI.
    /// @param iri  the text that would have been one, as valid UTF-8; null if there is none
    /// @param isEscaped  whether bytes of it are escaped, as above
    void refuse(const Record& record, const std::string* iri, bool isEscaped, std::string_view why);

    /// Says that a record is an IRI, but that there is no result for it.
    void fail(const Record& record, std::string_view why);

    /// Gives the one text that a verb made of a record.
    void give(const Record& record, std::string_view result);

    /// Gives an IRI that was built, in a form: its text, or its members. If its
    /// text is no IRI or another one, that is said too.
    /// @returns whether the text is that IRI
    bool giveBuilt(const Record& record, const foundation::network::IRI& iri, const Form& form);

    /// As `give`, with the answer to whether the result resolves to the record again.
    void giveProven(const Record& record, std::string_view result, bool resolvesBack);

    /// Gives an IRI with its components, as members.
    /// @param text  the record, or what was made of it
    /// @param error  what is wrong with it nevertheless; empty if nothing is
    void giveComponents(std::string_view text, const foundation::network::IRI& iri,
                        const Form& form, const Components& components, std::string_view error);

    /// Prints to standard error what is wrong with a record.
    void report(const Record& record, std::string_view why);

private:
    void beginValid(const Record& record);
    void refuse(const Record& record, const Problem& problem);
    void appendText(std::string_view result, std::string_view remark);

    RowFormat format_;
    std::string_view subject_;
    Output& output_;
    MemberWriter writer_;
};

} // namespace tool
