#include "framework/plugin/OptionCalls.h"

#include <optional>

namespace {

using Log = TLJiraOptions::Log;
using Kind = TLJiraOptions::DocumentKind;

/// Reads one value after the other, and remembers the first that is no good.
class Reader
{
public:
    Reader(const QVariantMap& named, QString& problem)
        : m_named(named)
        , m_problem(problem)
    {
    }

    bool has(const char* name)
    {
        m_known.append(QString::fromLatin1(name));
        return m_named.contains(m_known.last());
    }

    bool flag(const char* name)
    {
        const QVariant value = valueOf(name);
        if (has(name) && value.metaType() != QMetaType::fromType<bool>())
            refuse(name, QStringLiteral("either true or false"));
        return value.toBool();
    }

    QString text(const char* name)
    {
        const QVariant value = valueOf(name);
        if (has(name) && value.metaType() != QMetaType::fromType<QString>())
            refuse(name, QStringLiteral("a text"));
        return value.toString();
    }

    /// The place of the value among those that it may have; 0 if it is left out.
    int choice(const char* name, const QStringList& all)
    {
        const QVariant value = valueOf(name);
        const auto index = all.indexOf(value.toString());
        if (has(name) && index < 0)
            refuse(name, u'“' + all.join(QStringLiteral("” or “")) + u'”');
        return static_cast<int>(std::max<qsizetype>(index, 0));
    }

    QVariantList list(const char* name)
    {
        const QVariant value = valueOf(name);
        if (has(name) && (value.metaType() == QMetaType::fromType<QString>() || !value.canConvert<QVariantList>()))
            refuse(name, QStringLiteral("a list"));
        return value.toList();
    }

    void refuse(const char* name, const QString& expected)
    {
        if (m_problem.isEmpty())
            m_problem = QStringLiteral("The option “%1” is %2.").arg(QLatin1String(name), expected);
    }

    /// Those that nobody has asked for.
    void refuseOthers()
    {
        for (auto entry = m_named.begin(); entry != m_named.end(); ++entry) {
            if (!m_known.contains(entry.key()))
                m_problem = QStringLiteral("This Jira plug-in has no option “%1”.").arg(entry.key());
        }
    }

private:
    QVariant valueOf(const char* name) const { return m_named.value(QString::fromLatin1(name)); }

    const QVariantMap& m_named;
    QString& m_problem;
    QStringList m_known;
};

bool isText(const QVariant& value)
{
    return value.metaType() == QMetaType::fromType<QString>();
}

/// "odt", or the same with the extension of its packets. Nothing for anything else.
std::optional<Kind> kindOf(const QVariant& value)
{
    QVariantMap parts = isText(value) ? QVariantMap{{QStringLiteral("extension"), value}} : value.toMap();
    const QVariant extension = parts.take(QStringLiteral("extension"));
    const QVariant packetExtension = parts.take(QStringLiteral("packetExtension"));
    const bool isKnown =
        isText(extension) && (isText(packetExtension) || !packetExtension.isValid()) && parts.isEmpty();
    const Kind kind{extension.toString(), packetExtension.toString()};
    // A point at the beginning does not count.
    const bool isEmpty = kind.extension.isEmpty() || kind.extension == QLatin1String(".");
    return isKnown && !isEmpty ? std::optional(kind) : std::nullopt;
}

std::vector<Kind> documents(Reader& reader)
{
    if (!reader.has("documents"))
        return TLJiraOptions::defaultDocuments();
    std::vector<Kind> kinds;
    for (const QVariant& value : reader.list("documents")) {
        if (const auto kind = kindOf(value))
            kinds.push_back(*kind);
        else
            reader.refuse("documents", QStringLiteral("a list of extensions, as texts or as “extension” and "
                                                      "“packetExtension”"));
    }
    return kinds;
}

QStringList routes(Reader& reader)
{
    QStringList routes;
    for (const QVariant& value : reader.list("routes"))
        routes.append(value.toString());
    return routes;
}

std::optional<QString> proxy(Reader& reader)
{
    return reader.has("proxy") ? std::optional(reader.text("proxy")) : std::nullopt;
}

Log logChoice(Reader& reader, const Log::Function& function)
{
    const auto secrets = reader.flag("logSecrets") ? Log::Secrets::Shown : Log::Secrets::Blanked;
    const int choice = reader.choice("log", {QStringLiteral("on"), QStringLiteral("off"), QStringLiteral("signal")});
    if (choice == 1)
        return Log::off();
    if (choice == 2)
        return Log::to(function, secrets);
    return reader.has("log") || reader.has("logSecrets") ? Log::on(secrets) : Log();
}

} // namespace

TLJiraOptions OptionCalls::options(const QVariantMap& named, const Log::Function& log, QString& problem)
{
    problem.clear();
    Reader reader(named, problem);
    TLJiraOptions chosen;
    if (reader.choice("address", {QStringLiteral("schemeAndHost"), QStringLiteral("whole")}) == 1)
        chosen.address = TLJiraOptions::Address::Whole;
    if (reader.choice("signIn", {QStringLiteral("password"), QStringLiteral("token")}) == 1)
        chosen.signIn = TLJiraOptions::SignIn::Token;
    if (reader.choice("secrets", {QStringLiteral("settings"), QStringLiteral("keyring")}) == 1)
        chosen.secrets = TLJiraOptions::Secrets::Keyring;
    chosen.documents = documents(reader);
    chosen.log = logChoice(reader, log);
    chosen.routes = routes(reader);
    chosen.userAgent = reader.text("userAgent");
    chosen.proxy = proxy(reader);
    chosen.authorities = {reader.text("authorities"), reader.flag("replaceSystemAuthorities")};
    reader.refuseOthers();
    return chosen;
}
