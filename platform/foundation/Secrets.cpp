#include "platform/foundation/Secrets.h"

#include "platform/foundation/values/Match.h"
#include "platform/foundation/values/Spelling.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <atomic>
#include <list>
#include <mutex>
#include <vector>

namespace tljira {

namespace {

constexpr QLatin1String blank("***");
/// Shorter ones would be found in any text: they count where they stand alone.
constexpr qsizetype shortestInsideWords = 6;
/// A process has one login; the others are those before it.
constexpr std::size_t mostRemembered = 32;

struct Secret
{
    SecretKind kind;
    QString text;

    bool operator==(const Secret& other) const = default;
};

class Registry
{
public:
    static Registry& instance()
    {
        // Never destroyed: threads may still log while the process exits.
        static auto& registry = *new Registry;
        return registry;
    }

    void remember(const Secret& secret)
    {
        const std::lock_guard lock(m_mutex);
        std::erase(m_remembered, secret);
        m_remembered.push_back(secret);
        if (m_remembered.size() > mostRemembered)
            m_remembered.erase(m_remembered.begin());
    }

    std::shared_ptr<const void> hold(const Secret& secret)
    {
        const auto place = insert(secret);
        // Not under the lock: a pointer for which there is no memory lets go of the secret at once.
        return {&*place, [this, place](const void*) {
                    const std::lock_guard lock(m_mutex);
                    m_held.erase(place);
                }};
    }

    /// Longer ones first: one may be a part of another.
    std::vector<QString> texts(bool tokensAlone) const
    {
        std::vector<QString> all;
        const std::lock_guard lock(m_mutex);
        const auto add = [&](const Secret& secret) {
            if (!tokensAlone || secret.kind == SecretKind::Token)
                all.push_back(secret.text);
        };
        std::ranges::for_each(m_remembered, add);
        std::ranges::for_each(m_held, add);
        std::ranges::sort(all, std::ranges::greater(), &QString::size);
        return all;
    }

private:
    std::list<Secret>::iterator insert(const Secret& secret)
    {
        const std::lock_guard lock(m_mutex);
        return m_held.insert(m_held.end(), secret);
    }

    mutable std::mutex m_mutex;
    std::vector<Secret> m_remembered;
    std::list<Secret> m_held;
};

bool standsAlone(QStringView text, qsizetype start, qsizetype length)
{
    const bool isBehindWord = start > 0 && text[start - 1].isLetterOrNumber();
    const bool isBeforeWord = start + length < text.size() && text[start + length].isLetterOrNumber();
    return !isBehindWord && !isBeforeWord;
}

qsizetype secretAt(QStringView text, qsizetype start, const std::vector<QString>& secrets)
{
    for (const QString& secret : secrets) {
        const qsizetype length = spellingOf(secret, text, start);
        if (length > 0 && (secret.size() >= shortestInsideWords || standsAlone(text, start, length)))
            return length;
    }
    return 0;
}

QString blanked(const QString& text, const std::vector<QString>& secrets)
{
    if (secrets.empty())
        return text;
    QString result;
    qsizetype kept = 0;
    for (qsizetype position = 0; position < text.size();) {
        const qsizetype length = secretAt(text, position, secrets);
        if (length > 0) {
            result.append(QStringView(text).mid(kept, position - kept)).append(blank);
            kept = position + length;
        }
        position += std::max<qsizetype>(length, 1);
    }
    return kept == 0 ? text : result.append(QStringView(text).mid(kept));
}

/// How fields look in the log, in JSON, in a header and in a form.
struct Fields
{
    static const Fields& instance()
    {
        // Never destroyed either.
        static const auto& fields = *new Fields;
        return fields;
    }

    QRegularExpression in(const QString& pattern) const
    {
        return QRegularExpression(pattern.arg(separator, quoted), QRegularExpression::CaseInsensitiveOption);
    }

    const QString separator = QStringLiteral(R"re("?(?: = |=|: ?))re");
    const QString quoted = QStringLiteral(R"re("(?:[^"\\]++|\\.)*+")re");
    const QRegularExpression addresses{QStringLiteral(R"re((://[^\s/?#"@:]*+):(?:[^\s/?#"@]*+@)++)re")};
    const QRegularExpression headers =
        in(QStringLiteral(R"re((\b(?:set-cookie2?|cookie2?|(?:proxy-)?authorization)%1)(%2|[^\r\n]*))re"));
    const QRegularExpression passwords = in(QStringLiteral(R"re((\b(?:os_)?password%1)(%2|[^;,&\s]*))re"));
};

/// What follows the first group becomes `rest`. QString::replace() would leave all of it where memory is short.
QString without(const QRegularExpression& field, const QString& text, const QString& rest)
{
    QString result;
    qsizetype kept = 0;
    for (auto found = match(field, text); found.hasMatch(); found = match(field, text, kept)) {
        result.append(QStringView(text).mid(kept, found.capturedEnd(1) - kept)).append(rest);
        kept = found.capturedEnd();
    }
    return kept == 0 ? text : result.append(QStringView(text).mid(kept));
}

/// Also those that nobody has told of: a server may set a cookie with any answer.
QString withoutFields(const QString& logged)
{
    const Fields& fields = Fields::instance();
    // Half a surrogate pair, which a server may send, would be no text to look through.
    QString text = logged.isValidUtf16() ? logged : QString::fromUtf8(logged.toUtf8());
    text = without(fields.addresses, text, QStringLiteral(":***@"));
    text = without(fields.headers, text, blank);
    return without(fields.passwords, text, blank);
}

QJsonValue blanked(const QJsonValue& value, const std::vector<QString>& secrets)
{
    if (value.isString())
        return blanked(value.toString(), secrets);
    if (value.isArray()) {
        QJsonArray array = value.toArray();
        for (qsizetype index = 0; index < array.size(); ++index)
            array[index] = blanked(array.at(index), secrets);
        return array;
    }
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        QJsonObject result;
        for (auto entry = object.begin(); entry != object.end(); ++entry)
            result.insert(blanked(entry.key(), secrets), blanked(entry.value(), secrets));
        return result;
    }
    return value;
}

} // namespace

void hide(SecretKind kind, const QString& secret)
{
    if (!secret.trimmed().isEmpty())
        Registry::instance().remember({kind, secret});
}

void hideAuthorization(const QString& value)
{
    const QString credentials = value.section(u' ', 1).trimmed();
    hide(SecretKind::Token, credentials);
    if (!value.startsWith(QLatin1String("Basic "), Qt::CaseInsensitive))
        return;
    const QByteArray pair = QByteArray::fromBase64(credentials.toLatin1());
    const qsizetype colon = pair.indexOf(':');
    if (colon >= 0)
        hide(SecretKind::Token, QString::fromUtf8(pair.mid(colon + 1)));
}

std::shared_ptr<const void> hideWhileHeld(SecretKind kind, const QString& secret)
{
    return secret.trimmed().isEmpty() ? nullptr : Registry::instance().hold({kind, secret});
}

QString withoutTokens(const QString& text)
{
    return blanked(text, Registry::instance().texts(true));
}

QJsonValue withoutTokens(const QJsonValue& value)
{
    const auto tokens = Registry::instance().texts(true);
    return tokens.empty() ? value : blanked(value, tokens);
}

QString withoutSecrets(const QString& text)
{
    return withoutFields(blanked(text, Registry::instance().texts(false)));
}

} // namespace tljira
