#include "platform/foundation/loading/curl/Transfer.h"

#include "platform/foundation/Secrets.h"
#include "platform/foundation/loading/curl/Authorities.h"
#include "platform/foundation/loading/curl/CurlError.h"
#include "platform/foundation/loading/curl/CurlShare.h"
#include "platform/foundation/values/URL.h"

#include <QUrl>

#include <algorithm>
#include <utility>

namespace tljira {

namespace {

constexpr int mostRedirects = 20;
constexpr long sendBufferSize = 512L * 1024;
constexpr long receiveBufferSize = 512L * 1024;
/// Shorter values of a jar's cookies are settings of a page, such as a language.
constexpr qsizetype shortestSecretCookie = 8;
constexpr auto reportInterval = std::chrono::microseconds(16'600);

bool isNamed(const QString& field, QStringView name)
{
    return field.compare(name, Qt::CaseInsensitive) == 0;
}

/// Without control characters: a value with a line break would add header lines of its own.
QByteArray lineText(const QString& text)
{
    QByteArray bytes = text.toUtf8();
    bytes.removeIf([](char c) { return (static_cast<unsigned char>(c) < 0x20 && c != '\t') || c == 0x7f; });
    return bytes;
}

int portOf(const QUrl& url)
{
    return url.port(url.scheme() == u"https" ? 443 : 80);
}

bool isSameOrigin(const QUrl& from, const QUrl& to)
{
    return from.host().compare(to.host(), Qt::CaseInsensitive) == 0 && from.scheme() == to.scheme() &&
           portOf(from) == portOf(to);
}

/// Whether what was meant for the one address may be shown to the other: the same host, and no step down to plain text
/// or over to another port.
bool isSameSite(const QUrl& from, const QUrl& to)
{
    const bool isStepUp =
        from.scheme() == u"http" && to.scheme() == u"https" && portOf(from) == 80 && portOf(to) == 443;
    return isSameOrigin(from, to) || (isStepUp && from.host().compare(to.host(), Qt::CaseInsensitive) == 0);
}

bool isStepDown(const QUrl& from, const QUrl& to)
{
    return from.scheme() == u"https" && to.scheme() == u"http";
}

Error errorWithText(URLError code, const QString& text)
{
    return makeError(QLatin1String(URLErrorDomain), static_cast<qint64>(code), text);
}

/// "Never" is more than a clock can count, and comes as any number of seconds.
Transfer::Clock::duration asDuration(double seconds)
{
    constexpr double never = 10 * 365 * 86400.0;
    const std::chrono::duration<double> time(seconds > 0 ? std::min(seconds, never) : 0);
    return std::chrono::duration_cast<Transfer::Clock::duration>(time);
}

} // namespace

Transfer::Transfer(URLRequest request, const URLSessionConfiguration& configuration, std::shared_ptr<CookieJar> jar,
                   AnswerBody::Destination destination, std::shared_ptr<TransferObserver> observer)
    : m_request(std::move(request))
    , m_configuration(configuration)
    , m_jar(std::move(jar))
    , m_destination(destination)
    , m_observer(std::move(observer))
    , m_proxy(configuration.proxy)
    , m_timeout(asDuration(m_request.timeoutInterval))
{
    // libcurl takes addresses as they go on the wire.
    if (m_request.url)
        m_request.url->replace(u' ', QStringLiteral("%20"));
}

Transfer::~Transfer() = default;

bool Transfer::prepareHop(CURL* easy)
{
    m_easy = easy;
    CurlShare::reset(m_easy);
    m_head = AnswerHead();
    m_body = std::make_unique<AnswerBody>(m_destination);
    m_progress = TransferProgress();
    m_reportedSent = 0;
    m_downloaded = 0;
    noteMove();
    auto problem = checkAddress();
    if (!problem)
        problem = checkConfiguration();
    if (problem) {
        abort(*problem);
        return false;
    }
    if (usesJar() && !m_jar->share().isUsable()) {
        abort(makeURLError(URLError::ResourceUnavailable));
        return false;
    }
    setMethodAndBody();
    if (const auto error = m_source ? m_source->error() : std::nullopt) {
        abort(*error);
        return false;
    }
    setHeaders();
    setConnection();
    setCallbacks();
    return true;
}

std::optional<Error> Transfer::checkAddress()
{
    const std::optional<URL> url = m_request.url ? URL::parse(*m_request.url) : std::nullopt;
    const QString scheme = url && url->scheme ? url->scheme->toLower() : QString();
    if (scheme != u"http" && scheme != u"https")
        return makeURLError(URLError::UnsupportedURL);

    CURLU* parsed = curl_url();
    CURLUcode code = parsed ? CURLUE_OK : CURLUE_OUT_OF_MEMORY;
    if (code == CURLUE_OK)
        code = curl_url_set(parsed, CURLUPART_URL, m_request.url->toUtf8().constData(), CURLU_URLENCODE);
    char* encoded = nullptr;
    if (code == CURLUE_OK)
        code = curl_url_get(parsed, CURLUPART_URL, &encoded, 0);
    if (code == CURLUE_OK && curl_easy_setopt(m_easy, CURLOPT_URL, encoded) != CURLE_OK)
        code = CURLUE_OUT_OF_MEMORY;
    curl_free(encoded);
    curl_url_cleanup(parsed);
    if (code == CURLUE_OK)
        return std::nullopt;
    return makeURLError(code == CURLUE_OUT_OF_MEMORY ? URLError::ResourceUnavailable : URLError::BadURL);
}

std::optional<Error> Transfer::checkConfiguration()
{
    for (const QString& route : m_configuration.routes) {
        if (!URLSessionConfiguration::isRoute(route))
            return errorWithText(URLError::BadURL,
                                 QStringLiteral("“%1” is no route of the form HOST:PORT:ADDRESS:PORT.").arg(route));
    }
    const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
    if (std::ranges::any_of(m_configuration.userAgent, isControl))
        return errorWithText(
            URLError::BadURL,
            QStringLiteral("The name of the user agent has a line break or another character that steers."));
    if (const auto problem = m_proxy.problem())
        return problem;
    return Authorities::use(m_easy, m_configuration);
}

void Transfer::setMethodAndBody()
{
    const QByteArray method = lineText(m_request.HTTPMethod);
    const bool isPost = method == "POST";
    m_source.reset();
    m_isSourceAwaited = false;
    if (m_request.HTTPBody || isPost) {
        const Data body = m_request.HTTPBody.value_or(Data());
        m_source = std::make_unique<BodySource>(body, m_bodyCallBack);
        m_progress.expectedToSend = body.size();
        curl_easy_setopt(m_easy, CURLOPT_POST, 1L);
        curl_easy_setopt(m_easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
        // A request whose kept connection breaks before any answer is sent again by libcurl, and a server that had
        // taken the body would then hold it twice. On a connection of its own it is sent once.
        curl_easy_setopt(m_easy, CURLOPT_FRESH_CONNECT, 1L);
    }
    if (!isPost && method != "GET")
        curl_easy_setopt(m_easy, CURLOPT_CUSTOMREQUEST, method.constData());
    else if (!isPost && m_source)
        curl_easy_setopt(m_easy, CURLOPT_CUSTOMREQUEST, "GET");
    if (method == "HEAD")
        curl_easy_setopt(m_easy, CURLOPT_NOBODY, 1L);
}

void Transfer::setHeaders()
{
    m_headers = std::make_unique<HeaderList>();
    QString cookies;
    bool hasContentType = false;
    bool hasAcceptEncoding = false;
    for (const auto& [name, value] : m_request.headers()) {
        // The length of the body is known here better than anywhere else.
        if (isNamed(name, u"Content-Length"))
            continue;
        if (isNamed(name, u"Cookie")) {
            cookies = m_mayCarryCredentials ? value : QString();
            continue;
        }
        if (isNamed(name, u"Authorization")) {
            if (!m_mayCarryAuthorization)
                continue;
            hideAuthorization(value);
        }
        if (isNamed(name, u"Content-Type")) {
            if (m_hasLostBody)
                continue;
            hasContentType = true;
        }
        hasAcceptEncoding = hasAcceptEncoding || isNamed(name, u"Accept-Encoding");
        const QByteArray text = lineText(value);
        m_headers->append(lineText(name) + (text.isEmpty() ? QByteArray(";") : ": " + text));
    }
    if (!hasAcceptEncoding)
        m_headers->append(m_destination == AnswerBody::Destination::File ? "Accept-Encoding: identity"
                                                                         : "Accept-Encoding: gzip");
    if (m_source && !hasContentType)
        m_headers->append("Content-Type:");
    if (!m_request.valueForHTTPHeaderField(QStringLiteral("Accept")))
        m_headers->append("Accept: */*");
    // Waiting for a go-ahead costs a second with servers that do not know of it.
    m_headers->append("Expect:");
    curl_easy_setopt(m_easy, CURLOPT_HTTPHEADER, m_headers->lines);
    curl_easy_setopt(m_easy, CURLOPT_USERAGENT, lineText(m_configuration.userAgent).constData());
    setCookies(cookies);
}

bool Transfer::usesJar() const
{
    return m_jar && !m_hasSteppedDown && m_configuration.HTTPShouldSetCookies && m_request.HTTPShouldHandleCookies;
}

void Transfer::setCookies(const QString& explicitCookies)
{
    curl_easy_setopt(m_easy, CURLOPT_SHARE, usesJar() ? m_jar->share().handle() : nullptr);
    // Sharing alone would send the jar's cookies, but take up none.
    if (usesJar())
        curl_easy_setopt(m_easy, CURLOPT_COOKIEFILE, "");
    if (explicitCookies.isEmpty())
        return;

    // libcurl joins these to the jar's in one line, but would send twice what is in both. Pairs are parted by "; ": a
    // semicolon alone belongs to a value.
    const QUrl url(*m_request.url);
    const std::vector<HTTPCookie> jarCookies = usesJar() ? CurlShare::cookiesOf(m_easy) : std::vector<HTTPCookie>();
    const QString separator = QStringLiteral("; ");
    QStringList pairs = explicitCookies.split(separator);
    for (const QString& pair : pairs)
        hide(SecretKind::Login, pair.section(u'=', 1));
    for (const HTTPCookie& cookie : jarCookies) {
        if (cookie.value.size() >= shortestSecretCookie)
            hide(SecretKind::Login, cookie.value);
    }
    pairs.removeIf([&](const QString& pair) {
        return std::ranges::any_of(jarCookies, [&](const HTTPCookie& cookie) {
            return cookie.matches(url.scheme(), url.host(), url.path()) && cookie.name + u'=' + cookie.value == pair;
        });
    });
    if (!pairs.isEmpty())
        curl_easy_setopt(m_easy, CURLOPT_COOKIE, lineText(pairs.join(separator)).constData());
}

void Transfer::setConnection()
{
    m_routes = std::make_unique<HeaderList>();
    for (const QString& route : m_configuration.routes)
        m_routes->append(route.toUtf8());
    curl_easy_setopt(m_easy, CURLOPT_CONNECT_TO, m_routes->lines);
    curl_easy_setopt(m_easy, CURLOPT_NOSIGNAL, 1L);
    // A look-up that nobody waits for any more is left to itself: otherwise the end of one transfer would hold up all
    // others until the name server answers.
    curl_easy_setopt(m_easy, CURLOPT_QUICK_EXIT, 1L);
    m_proxy.use(m_easy);
    curl_easy_setopt(m_easy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(m_easy, CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_1_1);
    curl_easy_setopt(m_easy, CURLOPT_HTTP_CONTENT_DECODING, 0L);
    curl_easy_setopt(m_easy, CURLOPT_UPLOAD_BUFFERSIZE, sendBufferSize);
    curl_easy_setopt(m_easy, CURLOPT_BUFFERSIZE, receiveBufferSize);
    // The request's own time-out governs every phase.
    curl_easy_setopt(m_easy, CURLOPT_CONNECTTIMEOUT_MS, 24L * 3600 * 1000);
}

void Transfer::setCallbacks()
{
    curl_easy_setopt(m_easy, CURLOPT_PRIVATE, this);
    curl_easy_setopt(m_easy, CURLOPT_READFUNCTION, &Transfer::readBody);
    curl_easy_setopt(m_easy, CURLOPT_READDATA, this);
    curl_easy_setopt(m_easy, CURLOPT_HEADERFUNCTION, &Transfer::takeHeadLine);
    curl_easy_setopt(m_easy, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(m_easy, CURLOPT_WRITEFUNCTION, &Transfer::takeBody);
    curl_easy_setopt(m_easy, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(m_easy, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(m_easy, CURLOPT_XFERINFOFUNCTION, &Transfer::takeProgress);
    curl_easy_setopt(m_easy, CURLOPT_XFERINFODATA, this);
}

std::size_t Transfer::readBody(char* buffer, std::size_t size, std::size_t count, void* transfer)
{
    auto* self = static_cast<Transfer*>(transfer);
    const qint64 read =
        self->m_source ? self->m_source->read(buffer, static_cast<qint64>(size) * static_cast<qint64>(count)) : 0;
    self->m_isSourceAwaited = read == BodySource::mustWait;
    if (self->m_isSourceAwaited)
        return CURL_READFUNC_PAUSE;
    return read < 0 ? CURL_READFUNC_ABORT : static_cast<std::size_t>(read);
}

std::size_t Transfer::takeHeadLine(char* bytes, std::size_t size, std::size_t count, void* transfer)
{
    auto* self = static_cast<Transfer*>(transfer);
    self->noteMove();
    if (self->m_isGivenUp)
        return 0;
    if (!self->m_head.appendLine(QByteArrayView(bytes, static_cast<qsizetype>(size * count))))
        return 0;
    if (self->m_head.isComplete() && self->m_body->size() == 0 && !self->isRedirect()) {
        self->m_body->setContentEncoding(self->m_head.valueOf("Content-Encoding"));
        self->m_body->setContentType(self->m_head.valueOf("Content-Type"));
        self->m_progress.expectedToWrite = self->response().expectedContentLength;
    }
    return size * count;
}

std::size_t Transfer::takeBody(char* bytes, std::size_t size, std::size_t count, void* transfer)
{
    auto* self = static_cast<Transfer*>(transfer);
    if (self->m_isGivenUp)
        return 0;
    if (self->isRedirect())
        return size * count;
    return self->m_body->append(bytes, size * count) ? size * count : 0;
}

int Transfer::takeProgress(void* transfer, curl_off_t, curl_off_t downloaded, curl_off_t, curl_off_t uploaded)
{
    auto* self = static_cast<Transfer*>(transfer);
    if (self->m_isGivenUp)
        return 1;
    if (downloaded == self->m_downloaded && uploaded == self->m_progress.sent)
        return 0;
    self->noteMove();
    self->m_downloaded = downloaded;
    self->m_progress.sent = std::min<qint64>(uploaded, self->m_progress.expectedToSend);
    self->reportProgress(false);
    return 0;
}

void Transfer::reportProgress(bool isLast)
{
    m_progress.written = m_body->size();
    // Nobody follows the answer of a request that sends and saves nothing.
    if (m_progress.expectedToSend == 0 && m_destination == AnswerBody::Destination::Memory)
        return;
    const bool isAllSent = m_progress.sent == m_progress.expectedToSend && m_progress.sent > m_reportedSent;
    m_hasUnreported = !isLast && !isAllSent && m_lastMove - m_lastReport < reportInterval;
    if (m_hasUnreported)
        return;
    m_lastReport = m_lastMove;
    m_reportedSent = m_progress.sent;
    m_observer->transferMoved(m_progress);
}

Transfer::Clock::time_point Transfer::reportDue() const
{
    return m_hasUnreported ? m_lastReport + reportInterval : Clock::time_point::max();
}

void Transfer::reportIfDue()
{
    if (reportDue() > Clock::now())
        return;
    m_hasUnreported = false;
    m_lastReport = Clock::now();
    m_reportedSent = m_progress.sent;
    m_observer->transferMoved(m_progress);
}

bool Transfer::isRedirect() const
{
    long status = 0;
    curl_easy_getinfo(m_easy, CURLINFO_RESPONSE_CODE, &status);
    const bool isMoved = (status >= 301 && status <= 303) || status == 307 || status == 308;
    return isMoved && !m_head.valueOf("Location").isEmpty();
}

void Transfer::resumeBody()
{
    if (std::exchange(m_isSourceAwaited, false))
        curl_easy_pause(m_easy, CURLPAUSE_CONT);
}

bool Transfer::mustAwaitBody(CURLcode code)
{
    return code == CURLE_OK && m_source && !isRedirect() && m_source->check() == BodySource::Check::Pending;
}

bool Transfer::finishHop(CURLcode code)
{
    if (m_head.setsCookies() && m_jar)
        m_jar->saveChanges();

    TransferResult result;
    result.error = errorOf(code);
    if (!result.error && isRedirect()) {
        result.error = followRedirect();
        if (!result.error)
            return true;
    }
    if (!result.error && !m_body->finish())
        result.error = m_body->error();
    reportProgress(true);
    if (!result.error) {
        result.response = response();
        result.file = m_body->takeFile();
        result.body = m_body->takeData();
    }
    end(std::move(result));
    return false;
}

std::optional<Error> Transfer::errorOf(CURLcode code)
{
    if (m_isGivenUp)
        return makeURLError(URLError::Cancelled);
    if (m_source && m_source->error())
        return m_source->error();
    if (auto error = m_proxy.errorOf(code, m_easy))
        return error;
    if (code == CURLE_OK) {
        // libcurl takes a connection that closes within the head for the end of an answer without a body.
        return m_head.isComplete() ? std::nullopt : std::optional(makeURLError(URLError::NetworkConnectionLost));
    }
    if (m_body->error())
        return m_body->error();
    if (isHeadTooLarge(code)) {
        return errorWithText(URLError::DataLengthExceedsMaximum,
                             QStringLiteral("The head of the server’s answer is too large."));
    }
    if (code == CURLE_SSL_CACERT_BADFILE)
        return Authorities::errorOf(m_configuration);
    if (code == CURLE_OUT_OF_MEMORY)
        return makeURLError(URLError::ResourceUnavailable);
    if (code == CURLE_WRITE_ERROR)
        return makeURLError(URLError::CannotParseResponse);
    long systemError = 0;
    curl_easy_getinfo(m_easy, CURLINFO_OS_ERRNO, &systemError);
    return errorOfCurl(code, systemError, QUrl(*m_request.url).host());
}

/// libcurl gives up a single line of more than 100 KiB itself, with a code of its own since version 8.6.
bool Transfer::isHeadTooLarge(CURLcode code) const
{
    constexpr int tooLarge = 100;
    long sent = 0;
    curl_easy_getinfo(m_easy, CURLINFO_REQUEST_SIZE, &sent);
    const bool isLineTooLarge = (code == CURLE_OUT_OF_MEMORY && sent > 0) || static_cast<int>(code) == tooLarge;
    return m_head.isTooLarge() || (isLineTooLarge && !m_head.isComplete());
}

/// Whether there is anything in the request, or was before a redirect, that is meant for its server alone.
bool Transfer::isConfidential() const
{
    return m_request.HTTPBody || m_hasLostBody || m_request.valueForHTTPHeaderField(QStringLiteral("Cookie")) ||
           m_request.valueForHTTPHeaderField(QStringLiteral("Authorization"));
}

std::optional<Error> Transfer::followRedirect()
{
    if (++m_redirects > mostRedirects)
        return makeURLError(URLError::HTTPTooManyRedirects);
    char* target = nullptr;
    long status = 0;
    curl_easy_getinfo(m_easy, CURLINFO_REDIRECT_URL, &target);
    curl_easy_getinfo(m_easy, CURLINFO_RESPONSE_CODE, &status);
    if (!target)
        return makeURLError(URLError::BadURL);

    const QString address = QString::fromUtf8(target);
    if (isStepDown(QUrl(*m_request.url), QUrl(address))) {
        if (isConfidential())
            return makeURLError(URLError::AppTransportSecurityRequiresSecureConnection);
        m_hasSteppedDown = true;
    }
    m_mayCarryCredentials = m_mayCarryCredentials && isSameSite(QUrl(*m_request.url), QUrl(address));
    m_mayCarryAuthorization = m_mayCarryAuthorization && isSameOrigin(QUrl(*m_request.url), QUrl(address));
    m_request.url = address;
    const bool isPost = m_request.HTTPMethod == u"POST";
    if (status == 303 || (isPost && (status == 301 || status == 302))) {
        m_request.HTTPMethod = QStringLiteral("GET");
        m_hasLostBody = m_hasLostBody || m_request.HTTPBody.has_value();
        m_request.HTTPBody.reset();
    }
    return std::nullopt;
}

HTTPURLResponse Transfer::response() const
{
    HTTPURLResponse response;
    char* url = nullptr;
    long status = 0;
    curl_off_t length = -1;
    curl_easy_getinfo(m_easy, CURLINFO_EFFECTIVE_URL, &url);
    curl_easy_getinfo(m_easy, CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(m_easy, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
    response.url = QString::fromUtf8(url);
    response.statusCode = static_cast<int>(status);
    response.headers = m_head.fields();
    response.expectedContentLength = m_body->isPacked() ? -1 : length;
    return response;
}

void Transfer::abort(const Error& error)
{
    end({error, std::nullopt, Data(), nullptr});
}

void Transfer::end(TransferResult result)
{
    m_easy = nullptr;
    m_source.reset();
    // An unfinished file is gone by the time the end is heard of. To give back much memory takes longer than anybody
    // should wait for a cancel.
    if (m_destination == AnswerBody::Destination::File)
        m_body.reset();
    m_observer->transferEnded(std::move(result));
    m_body.reset();
}

} // namespace tljira
