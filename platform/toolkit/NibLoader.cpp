#include "platform/toolkit/NibLoader.h"

#include "platform/toolkit/Nib.h"
#include "platform/toolkit/OffScreen.h"
#include "platform/toolkit/RegisteredViews.h"
#include "platform/toolkit/TableView.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QUiLoader>

namespace tljira {

namespace {

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
        return QUiLoader::createWidget(className, parent, name);
    }
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
    if (!root) {
        *error = sharedLoader().errorString();
        return nullptr;
    }
    QList<QWidget*> views = root->findChildren<QWidget*>();
    views.prepend(root);
    for (QWidget* view : views) {
        if (auto* table = qobject_cast<TableView*>(view))
            table->setCellMaker([nib](const QString& identifier) { return nib->makeCell(identifier); });
        announceLoadedView(view);
    }
    return root;
}

} // namespace tljira
