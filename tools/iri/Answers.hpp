#pragma once

#include "Components.hpp"
#include "ExitCode.hpp"
#include "Forms.hpp"
#include "Json.hpp"
#include "Output.hpp"
#include "Reading.hpp"
#include "Records.hpp"

#include <foundation/network/IRI.hpp>

#include <functional>
#include <string>
#include <string_view>

namespace tool {

/// What the verbs say of their records, in the same way, as text or as JSON.
class Answers {
public:
    /// @param subject  under what name a record stands in JSON, if it is not to be an IRI
    Answers(bool isJson, Output& output, std::string_view subject = "iri")
        : isJson_(isJson)
        , subject_(subject)
        , output_(output)
    {
    }

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

    /// Gives an IRI that was built, in a form: its text, and as JSON its components as well. If its
    /// text is no IRI or another one, that is said too.
    /// @returns whether the text is that IRI
    bool giveBuilt(const Record& record, const foundation::network::IRI& iri, const Form& form);

    /// As `give`, with the answer to whether the result resolves to the record again.
    void giveProven(const Record& record, std::string_view result, bool resolvesBack);

    /// Gives an IRI with its components, always as JSON.
    /// @param text  the record, or what was made of it
    /// @param error  what is wrong with it nevertheless; empty if nothing is
    void giveComponents(std::string_view text, const foundation::network::IRI& iri,
                        const Form& form, const Components& components, std::string_view error);

    /// Does something with each record that is an IRI, and gives what @p make makes of it, or what
    /// the library says against it.
    /// @returns whether all went well
    ExitCode answerEach(Records& records,
                        const std::function<std::string(const foundation::network::IRI&)>& make);

    /// Prints to standard error what is wrong with a record.
    void report(const Record& record, std::string_view why);

private:
    void beginJson(const Record& record);
    void endJson();

    bool isJson_;
    std::string_view subject_;
    Output& output_;
    JsonLines json_;
};

} // namespace tool
