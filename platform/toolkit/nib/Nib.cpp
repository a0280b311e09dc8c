#include "platform/toolkit/nib/Nib.h"

#include "platform/foundation/Log.h"
#include "platform/toolkit/nib/InterfaceTexts.h"
#include "platform/toolkit/nib/NibLoader.h"
#include "platform/toolkit/tables/TableCellView.h"
#include "platform/toolkit/views/FitContent.h"
#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/OffScreen.h"

#include <QFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace tljira {

namespace {

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QWidget* viewIn(QWidget* root)
{
    auto* view = root->findChild<QWidget*>(QStringLiteral("view"), Qt::FindDirectChildrenOnly);
    return view ? view : root;
}

// A font larger than the designer's must not cut texts off.
void makeRoom(QWidget* view)
{
    view->setGeometry(QRect(QPoint(0, 0), view->size().expandedTo(neededSize(view))));
}

void copyElement(QXmlStreamReader& reader, QXmlStreamWriter& writer)
{
    for (int depth = 0; !reader.atEnd(); reader.readNext()) {
        writer.writeCurrentToken(reader);
        if (reader.isStartElement())
            ++depth;
        else if (reader.isEndElement() && --depth == 0)
            return;
    }
}

bool isWidgetNamed(const QXmlStreamReader& reader, const QString& name)
{
    return reader.name() == u"widget" && reader.attributes().value(QLatin1String("name")) == name;
}

} // namespace

Nib::Nib(QString name, const Bundle& bundle, QByteArray text)
    : m_name(std::move(name))
    , m_description(bundle.isMainBundle() ? m_name + QStringLiteral(" (the host's own)") : m_name)
    , m_text(std::move(text))
{
}

std::shared_ptr<Nib> Nib::load(const QString& name, const Bundle& bundle)
{
    const QString path = bundle.pathForInterfaceFile(name);
    const std::shared_ptr<Nib> nib(new Nib(name, bundle, InterfaceTexts::shared().translatedFile(contentsOf(path))));
    if (nib->m_text.isEmpty())
        log(u"interface file %@ is missing or empty: %@", nib->m_description, path);
    return nib;
}

NibViews Nib::instantiate()
{
    NibViews views;
    if (m_text.isEmpty())
        return views;
    QString error;
    QWidget* root = NibLoader::load(m_text, shared_from_this(), &error);
    if (!root) {
        log(u"interface file %@ is broken: %@", m_description, error);
        return views;
    }
    views.windowTitle = root->windowTitle();
    for (auto* cell : root->findChildren<TableCellView*>()) {
        for (const QString& outlet : cell->connectOutlets())
            views.missingCellOutlets.append(QStringLiteral("%1 in the cell %2").arg(outlet, cell->objectName()));
    }
    views.view = viewIn(root);
    if (views.view != root) {
        for (QWidget* child : subviews(root)) {
            if (dynamic_cast<TableCellView*>(child))
                continue;
            removeFromSuperview(child);
            if (child != views.view)
                views.rest.append(child);
        }
        delete root;
    }
    makeRoom(views.view);
    for (QWidget* view : views.rest)
        makeRoom(view);
    return views;
}

QByteArray Nib::prototypeText(const QString& identifier) const
{
    QByteArray text;
    QXmlStreamReader reader(m_text);
    QXmlStreamWriter writer(&text);
    writer.writeStartElement(QStringLiteral("ui"));
    writer.writeAttribute(QStringLiteral("version"), QStringLiteral("4.0"));
    bool found = false;
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement())
            continue;
        const bool isPrototype = !found && isWidgetNamed(reader, identifier);
        // The class is the context of translations.
        if (isPrototype || reader.name() == u"class" || reader.name() == u"customwidgets")
            copyElement(reader, writer);
        found = found || isPrototype;
    }
    writer.writeEndElement();
    return found ? text : QByteArray();
}

TableCellView* Nib::makeCell(const QString& identifier)
{
    const bool isFirst = !m_prototypes.contains(identifier);
    if (isFirst)
        m_prototypes.insert(identifier, prototypeText(identifier));
    const QByteArray text = m_prototypes.value(identifier);
    if (text.isEmpty() && !isFirst)
        return nullptr;
    QString error = QStringLiteral("no such view");
    QWidget* root = text.isEmpty() ? nullptr : NibLoader::load(text, shared_from_this(), &error);
    auto* cell = dynamic_cast<TableCellView*>(root);
    if (!cell) {
        log(u"interface file %@ has no cell %@: %@", m_description, identifier,
            root ? QStringLiteral("it is no table cell") : error);
        m_prototypes.insert(identifier, QByteArray());
        delete root;
        return nullptr;
    }
    cell->wake(identifier);
    return cell;
}

} // namespace tljira
