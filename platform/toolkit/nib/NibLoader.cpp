#include "platform/toolkit/nib/NibLoader.h"

#include "platform/toolkit/nib/Nib.h"
#include "platform/toolkit/nib/RegisteredViews.h"
#include "platform/toolkit/tables/TableView.h"
#include "platform/toolkit/views/TextRole.h"
#include "platform/toolkit/windows/OffScreen.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QLineEdit>
#include <QUiLoader>

#include <utility>

namespace tljira {

namespace {

constexpr QMargins roomInFields(4, 4, 4, 4);

class Loader : public QUiLoader
{
public:
    Loader() { setLanguageChangeEnabled(false); }

    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override
    {
        if (QWidget* view = makeRegisteredView(className, parent)) {
            view->setObjectName(name);
            return view;
        }
        QWidget* view = QUiLoader::createWidget(className, parent, name);
        if (auto* field = qobject_cast<QLineEdit*>(view))
            field->setTextMargins(roomInFields);
        return view;
    }

    // QUiLoader takes it for granted that there is one.
    QLayout* createLayout(const QString& className, QObject* parent, const QString& name) override
    {
        if (QLayout* layout = QUiLoader::createLayout(className, parent, name))
            return layout;
        m_unknownLayout = className;
        return QUiLoader::createLayout(QStringLiteral("QVBoxLayout"), parent, name);
    }

    /// The class of a layout that the file last loaded has and Qt has not; empty if there was none.
    QString takeUnknownLayout() { return std::exchange(m_unknownLayout, QString()); }

private:
    QString m_unknownLayout;
};

// QUiLoader would load every Designer plugin of the machine into the host, which takes longer than to open a window,
// and none of them is needed. It looks for them once, below the application's library paths.
Loader* makeLoaderWithoutPlugins()
{
    const QStringList paths = QCoreApplication::libraryPaths();
    QCoreApplication::setLibraryPaths({});
    auto* loader = new Loader;
    QCoreApplication::setLibraryPaths(paths);
    return loader;
}

Loader& sharedLoader()
{
    static Loader* const loader = makeLoaderWithoutPlugins();
    return *loader;
}

} // namespace

QWidget* NibLoader::load(const QByteArray& text, const std::shared_ptr<Nib>& nib, QString* error)
{
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    QWidget* root = sharedLoader().load(&buffer, offScreen());
    const QString unknownLayout = sharedLoader().takeUnknownLayout();
    if (!root) {
        *error = sharedLoader().errorString();
        return nullptr;
    }
    if (!unknownLayout.isEmpty()) {
        delete root;
        *error = QStringLiteral("There is no layout of the class \"%1\".").arg(unknownLayout);
        return nullptr;
    }
    QList<QWidget*> views = root->findChildren<QWidget*>();
    views.prepend(root);
    for (QWidget* view : views) {
        if (auto* table = qobject_cast<TableView*>(view))
            table->setCellMaker([nib](const QString& identifier) { return nib->makeCell(identifier); });
        TextRole::applyProperty(view);
        announceLoadedView(view);
    }
    return root;
}

} // namespace tljira
