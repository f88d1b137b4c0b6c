#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include <cstddef>
#include <stdexcept>
#include <string>

namespace benchmarks {

/// Qt: a QUrl that was read in its strict mode. What is read from it is asked for in UTF-8.
struct Qt5 {
    static constexpr const char* name = "qt";
    using Value = QUrl;

    static bool accepts(const std::string& text)
    {
        // An empty QUrl is not valid, but the empty text is a reference that it takes.
        return text.empty() || read(text).isValid();
    }

    static Value parse(const std::string& text) { return read(text); }

    template <class Use>
    static void readStrings(const Value& value, Use use)
    {
        constexpr auto asWritten = QUrl::EncodeUnicode | QUrl::EncodeDelimiters
                                   | QUrl::EncodeReserved | QUrl::EncodeSpaces;
        const auto part = [&use](const QString& text) { use(text.toUtf8()); };
        if (!value.scheme().isEmpty())
            part(value.scheme());
        if (!value.userInfo().isEmpty())
            part(value.userInfo(asWritten));
        if (!value.host().isEmpty())
            part(value.host(QUrl::EncodeUnicode));
        if (value.port() != -1)
            use(QByteArray::number(value.port()));
        part(value.path(asWritten));
        if (value.hasQuery())
            part(value.query(asWritten));
        if (value.hasFragment())
            part(value.fragment(asWritten));
    }

    static std::string print(const Value& value)
    {
        return value.toString(QUrl::PrettyDecoded).toStdString();
    }

    /// Hosts in Punycode, all else percent-encoded.
    static std::string asciiForm(const Value& value) { return value.toEncoded().toStdString(); }

    static std::string resolve(const std::string& reference, const Value& base)
    {
        return base.resolved(read(reference)).toEncoded().toStdString();
    }

    /// Shares what the other holds.
    static Value copy(const Value& value) { return value; }
    static bool equal(const Value& a, const Value& b) { return a == b; }
    static bool less(const Value& a, const Value& b) { return a < b; }
    static std::size_t hash(const Value& value) { return qHash(value); }

private:
    static QUrl read(const std::string& text)
    {
        const auto size = static_cast<int>(text.size());
        return QUrl::fromEncoded(QByteArray::fromRawData(text.data(), size), QUrl::StrictMode);
    }
};

} // namespace benchmarks
