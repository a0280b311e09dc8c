#include "tests/screenreader/Reader.h"

#include "tests/kit/WaitUntil.h"

#include <QDBusArgument>
#include <QDBusPendingCall>
#include <QDBusPendingReply>

#include <gtest/gtest.h>

#include <chrono>

namespace tests {

namespace {

using namespace std::chrono_literals;

constexpr char accessible[] = "org.a11y.atspi.Accessible";
constexpr char registry[] = "org.a11y.atspi.Registry";
constexpr char root[] = "/org/a11y/atspi/accessible/root";
constexpr quint32 labelledBy = 2;

/// Bits of the protocol.
enum State { Enabled = 8, Editable = 7, Modal = 16, Sensitive = 24, Showing = 25, Visible = 30 };

QVariantList waitFor(const QDBusPendingCall& call, const QString& what)
{
    EXPECT_TRUE(waitUntil([&] { return call.isFinished(); })) << what.toStdString();
    const QDBusMessage reply = call.reply();
    // What was there a moment ago may be gone.
    if (reply.errorName() == u"org.freedesktop.DBus.Error.UnknownObject" ||
        reply.errorName() == u"org.freedesktop.DBus.Error.UnknownInterface")
        return {};
    EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage)
        << what.toStdString() << ": " << reply.errorMessage().toStdString();
    return reply.arguments();
}

QString addressOfBus()
{
    const auto question =
        QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                       QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    return waitFor(QDBusConnection::sessionBus().asyncCall(question), QStringLiteral("address of the bus"))
        .value(0)
        .toString();
}

QPair<QString, QString> reference(const QDBusArgument& argument)
{
    QString service;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> service >> path;
    argument.endStructure();
    return {service, path.path()};
}

} // namespace

QList<Told> Told::all() const
{
    QList<Told> all{*this};
    for (const Told& part : parts)
        all.append(part.all());
    return all;
}

Reader::Reader()
    : m_bus(QDBusConnection::connectToBus(addressOfBus(), QStringLiteral("reader")))
{
    EXPECT_TRUE(m_bus.isConnected());
    listen("object:state-changed:showing");
    listen("object:state-changed:focused");
    listen("object:property-change:accessible-value");
    listen("object:property-change:accessible-name");
    const QString events = QStringLiteral("org.a11y.atspi.Event.Object");
    EXPECT_TRUE(m_bus.connect(QString(), QString(), events, QStringLiteral("StateChanged"), this,
                              SLOT(stateChanged(QDBusMessage))));
    EXPECT_TRUE(m_bus.connect(QString(), QString(), events, QStringLiteral("PropertyChange"), this,
                              SLOT(propertyChanged(QDBusMessage))));
}

Reader::~Reader()
{
    QDBusConnection::disconnectFromBus(QStringLiteral("reader"));
}

void Reader::listen(const char* event)
{
    ask(QLatin1String(registry), QStringLiteral("/org/a11y/atspi/registry"), registry, "RegisterEvent",
        {QString::fromLatin1(event)});
}

QVariantList Reader::ask(const QString& service, const QString& path, const char* interface, const char* method,
                         const QVariantList& arguments)
{
    QDBusMessage question =
        QDBusMessage::createMethodCall(service, path, QLatin1String(interface), QLatin1String(method));
    question.setArguments(arguments);
    return waitFor(m_bus.asyncCall(question, -1), path + u' ' + QLatin1String(method));
}

QVariantList Reader::ask(const QString& path, const char* interface, const char* method, const QVariantList& arguments)
{
    return ask(service(), path, interface, method, arguments);
}

QVariant Reader::property(const QString& path, const char* interface, const char* name)
{
    const QVariantList answer = ask(path, "org.freedesktop.DBus.Properties", "Get",
                                    {QString::fromLatin1(interface), QString::fromLatin1(name)});
    return answer.isEmpty() ? QVariant() : answer.first().value<QDBusVariant>().variant();
}

QList<QPair<QString, QString>> Reader::children(const QString& service, const QString& path)
{
    QList<QPair<QString, QString>> found;
    const QVariantList answer = ask(service, path, accessible, "GetChildren", {});
    if (answer.isEmpty())
        return found;
    const auto list = answer.first().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd())
        found.append(reference(list));
    list.endArray();
    return found;
}

QString Reader::service()
{
    if (m_service.isEmpty()) {
        const auto isThere = [this] {
            const auto programs = children(QLatin1String(registry), QLatin1String(root));
            m_service = programs.isEmpty() ? QString() : programs.first().first;
            return !m_service.isEmpty();
        };
        EXPECT_TRUE(waitUntil(isThere)) << "the program has not told of itself";
    }
    return m_service;
}

QList<Told> Reader::windows()
{
    QList<Told> windows;
    for (const auto& [ignored, path] : children(service(), QLatin1String(root))) {
        const Told window = read(path);
        if (window.isShowing)
            windows.append(window);
    }
    return windows;
}

Told Reader::read(const QString& path)
{
    Told told;
    told.path = path;
    told.role = ask(path, accessible, "GetRole").value(0).toUInt();
    told.roleName = ask(path, accessible, "GetRoleName").value(0).toString();
    told.name = property(path, accessible, "Name").toString();
    const QVariantList state = ask(path, accessible, "GetState");
    if (state.isEmpty())
        return told;
    const auto bits = qdbus_cast<QList<quint32>>(state.first());
    const quint64 states = quint64(bits.value(0)) | quint64(bits.value(1)) << 32;
    const auto has = [states](State which) { return (states >> which & 1) != 0; };
    told.isShowing = has(Showing) && has(Visible);
    told.isModal = has(Modal);
    told.isUsable = has(Enabled) && has(Sensitive);
    told.takesText = has(Editable);
    told.label = labelOf(path);
    if (!told.isShowing)
        return told;
    for (const auto& [ignored, child] : children(service(), path)) {
        const Told part = read(child);
        if (part.isShowing)
            told.parts.append(part);
    }
    return told;
}

QString Reader::labelOf(const QString& path)
{
    QStringList labels;
    const QVariantList answer = ask(path, accessible, "GetRelationSet");
    if (answer.isEmpty())
        return {};
    QStringList paths;
    const auto relations = answer.first().value<QDBusArgument>();
    relations.beginArray();
    while (!relations.atEnd()) {
        quint32 kind = 0;
        relations.beginStructure();
        relations >> kind;
        relations.beginArray();
        while (!relations.atEnd()) {
            const QString target = reference(relations).second;
            if (kind == labelledBy)
                paths.append(target);
        }
        relations.endArray();
        relations.endStructure();
    }
    relations.endArray();
    for (const QString& target : paths)
        labels.append(property(target, accessible, "Name").toString());
    return labels.join(u'\n');
}

bool Reader::act(const QString& path, const QString& action)
{
    const int count = property(path, "org.a11y.atspi.Action", "NActions").toInt();
    for (int index = 0; index < count; ++index) {
        if (ask(path, "org.a11y.atspi.Action", "GetName", {index}).value(0).toString() == action)
            return ask(path, "org.a11y.atspi.Action", "DoAction", {index}).value(0).toBool();
    }
    return false;
}

bool Reader::write(const QString& path, const QString& text)
{
    return ask(path, "org.a11y.atspi.EditableText", "SetTextContents", {text}).value(0).toBool();
}

double Reader::value(const QString& path)
{
    return property(path, "org.a11y.atspi.Value", "CurrentValue").toDouble();
}

QList<News> Reader::takeNews()
{
    // What the program has told before it answers comes before the answer.
    ask(QLatin1String(root), accessible, "GetRole");
    drainMainQueue();
    return std::exchange(m_news, {});
}

void Reader::stateChanged(const QDBusMessage& message)
{
    const QVariantList values = message.arguments();
    if (values.value(1).toInt() != 1)
        return;
    const QString state = values.value(0).toString();
    if (state == u"showing")
        m_news.append({News::Kind::Shown, message.path()});
    else if (state == u"focused")
        m_news.append({News::Kind::Focused, message.path()});
}

void Reader::propertyChanged(const QDBusMessage& message)
{
    const QString property = message.arguments().value(0).toString();
    if (property == u"accessible-value")
        m_news.append({News::Kind::ValueChanged, message.path()});
    else if (property == u"accessible-name")
        m_news.append({News::Kind::NameChanged, message.path()});
}

} // namespace tests
