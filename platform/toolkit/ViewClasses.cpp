#include "platform/toolkit/ViewClasses.h"

#include "platform/toolkit/ElidedLabel.h"
#include "platform/toolkit/ImageView.h"
#include "platform/toolkit/ProgressIndicator.h"
#include "platform/toolkit/RegisteredViews.h"
#include "platform/toolkit/TableCellView.h"
#include "platform/toolkit/TableView.h"

#include <QHash>

#include <vector>

namespace platform {

namespace {

template <class View>
QWidget* make(QWidget* parent)
{
    return new View(parent);
}

QHash<QString, ViewMaker>& makers()
{
    static QHash<QString, ViewMaker> all = {
        {QStringLiteral("platform::ElidedLabel"), make<ElidedLabel>},
        {QStringLiteral("platform::ImageView"), make<ImageView>},
        {QStringLiteral("platform::ProgressIndicator"), make<ProgressIndicator>},
        {QStringLiteral("platform::TableCellView"), make<TableCellView>},
        {QStringLiteral("platform::TableView"), make<TableView>},
    };
    return all;
}

std::vector<ViewObserver>& observers()
{
    static std::vector<ViewObserver> all;
    return all;
}

} // namespace

void registerViewClass(const QString& className, ViewMaker maker)
{
    makers()[className] = std::move(maker);
}

void observeLoadedViews(ViewObserver observer)
{
    observers().push_back(std::move(observer));
}

QWidget* makeRegisteredView(const QString& className, QWidget* parent)
{
    const ViewMaker maker = makers().value(className);
    return maker ? maker(parent) : nullptr;
}

void announceLoadedView(QWidget* view)
{
    for (const ViewObserver& observer : observers())
        observer(view);
}

} // namespace platform
